/// @file
/// The settings dialog, as this program uses it.
#pragma once

#include <kestrelsettingui.h>

#include <QPointer>
#include <QString>

class QDialog;
class QWidget;

namespace kestrel {

/// Where the paper comes from.
enum class PaperSource
{
    Feeder = 0,
    Flatbed = 1,
    Automatic = 2
};

/// What the dialog answers after its settings have been sent.
struct ScanAnswers
{
    int dpi = 0;                              ///< 0 when the dialog does not know
    int colourCorrection = 0;                 ///< 0 none, 1 mixed, 2 text, 3 photo
    PaperSource source = PaperSource::Feeder; ///< of the dialog, not of the scanner
    bool singleSheet = false;                 ///< stop after one sheet
    bool duplex = false;                      ///< both sides
    bool split = false;                       ///< each image in two
    int pauseSeconds = 0;                     ///< between two flatbed scans; 0: one scan only
};

/// Owns a settings dialog and calls the exported functions on it. GUI thread only.
class SettingsDialog
{
public:
    /// @param parent the window the dialog stands in front of; may be null
    /// @throws std::bad_alloc when there is no dialog to be had
    explicit SettingsDialog(QWidget* parent);
    ~SettingsDialog();
    Q_DISABLE_COPY_MOVE(SettingsDialog)

    /// Binds the dialog to an open scanner: its options and its settings file are read.
    /// @param handle SANE handle; it stays the caller's and has to stay open
    /// @param identity what the scanner is
    /// @param configDir folder of the settings files, created when it does not exist
    void bind(void* handle, ScannerIdentity identity, const QString& configDir);

    /// The same scanner has been opened anew.
    void replaceHandle(void* handle);

    /// Shows the dialog; returns when the user has closed it.
    void exec();

    /// Sends all settings to the scanner and asks for the answers. Before each scan.
    ScanAnswers apply();

    /// @return the answers as they stand, without sending anything
    ScanAnswers answers() const;

    /// Chooses the settings of a button on the scanner.
    /// @return false when the user has made no template for it
    bool chooseButton(int button);

    /// Switches the removal of blank pages.
    void setBlankPageRemoval(bool on);

    /// @return the dialog itself, for who wants to look at it
    QDialog* dialog() const;

private:
    QPointer<QDialog> m_dialog;
};

} // namespace kestrel
