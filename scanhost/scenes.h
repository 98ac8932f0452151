/// @file
/// What the program can do, shown without anyone touching it.
#pragma once

#include "command_line.h"

#include <QObject>
#include <QRectF>
#include <QString>

class QDialog;

namespace kestrel {

class DialogHand;
class MainWindow;

/// Plays one scene in the settings dialog of @p window with the controls a user has, and ends the
/// application; exit code 0 when everything went as it should.
///
/// - FirstStart: gray at 300 dpi is confirmed, first-start.png is the picture of it
/// - SecondStart: the same settings are there without anyone's doing, second-start.png
/// - Preview: an area is drawn on the preview of the flatbed, preview-selection.png; it is
///   confirmed and scanned, area.png
/// - Templates: button1 (both sides, colour and black-and-white) and button2 (flatbed, gray, A5,
///   centred) are added
class Scenes : public QObject
{
    Q_OBJECT

public:
    /// @param folder for the pictures, created when it does not exist
    Scenes(MainWindow& window, Scene scene, const QString& folder, QObject* parent = nullptr);

    /// Starts as soon as the window has found its scanner. Call before MainWindow::findDevices().
    void arm();

private:
    void play();
    void inDialog(QDialog* dialog);
    void firstStart(DialogHand& hand);
    void secondStart(DialogHand& hand);
    void selectArea(DialogHand& hand);
    void keepArea();
    void addTemplates(DialogHand& hand);
    void addTemplate(DialogHand& hand, const QString& name);
    void end();
    QString path(const QString& name) const;

    MainWindow& m_window;
    Scene m_scene;
    QString m_folder;
    QRectF m_area; ///< drawn on the preview, millimetres
    QString m_problem;
};

} // namespace kestrel
