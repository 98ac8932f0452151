/// @file
/// Pictures of the program for its documentation, made without anyone touching it.
#pragma once

#include <QObject>
#include <QString>

class QDialog;

namespace kestrel {

class MainWindow;

/// Shows the settings dialog of @p window, saves a picture of each tab that can be reached as
/// tab-NN.png (counted from 01 by the tab's place), closes it, scans, saves window.png and ends the
/// application; exit code 0 when all pictures have been written and the scan went well.
class Screenshots : public QObject
{
    Q_OBJECT

public:
    /// @param folder created when it does not exist
    Screenshots(MainWindow& window, const QString& folder, QObject* parent = nullptr);

    /// Starts as soon as the window has found its scanner. Call before MainWindow::findDevices().
    void arm();

private:
    void photographDialog();
    void nextTab(QDialog* dialog, int index);
    void photographWindow();
    void save(QWidget& widget, const QString& name);
    void end();

    MainWindow& m_window;
    QString m_folder;
    bool m_good = true;
};

} // namespace kestrel
