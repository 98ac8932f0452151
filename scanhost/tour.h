/// @file
/// The first scan of someone who has never seen the program.
#pragma once

#include <QObject>
#include <QString>

namespace kestrel {

class MainWindow;

/// Opens the settings dialog as soon as there is a scanner; when the user confirms it, scans and
/// saves the pages as a PDF. The window stays open.
class Tour : public QObject
{
    Q_OBJECT

public:
    /// @param pdfFile where the pages go; an existing file is replaced
    Tour(MainWindow& window, const QString& pdfFile, QObject* parent = nullptr);

    /// Call before MainWindow::findDevices().
    void arm();

private:
    void showSettings();

    MainWindow& m_window;
    QString m_pdfFile;
};

} // namespace kestrel
