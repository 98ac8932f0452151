/// @file
/// The dialog that defines, changes or removes the one custom resolution.
#pragma once

#include <QDialog>
#include <QString>

#include <memory>

class Ui_CustomResolution;

/// Answers with the signal getCustomResolution(); cancelling sends nothing.
class Q_DECL_EXPORT CustomResolution : public QDialog
{
    Q_OBJECT

public:
    /// @param parent the main dialog; owns this one. May be null.
    explicit CustomResolution(QWidget* parent = nullptr);
    ~CustomResolution() override;
    Q_DISABLE_COPY_MOVE(CustomResolution)

    /// Prepares the dialog for the next exec().
    /// @param text the present custom entry, for example "custom-250"; empty when there is none.
    void setCustomResolution(QString text);

    /// Takes the range of a scanner that is being bound; a dialog that is open is cancelled.
    /// @param maximum the scanner's highest resolution, in dpi. The lowest one offered is always 72
    /// dpi.
    void setResolutionRange(int maximum);

signals:
    /// @param text the new entry, for example "custom-320"; empty when the entry is to be removed.
    void getCustomResolution(QString text);

public slots:
    /// Sends the chosen resolution as a new entry and closes.
    void on_add_clicked();
    /// Sends the chosen resolution in place of the entry that exists and closes.
    void on_modify_clicked();
    /// Sends an empty text and closes.
    void on_remove_clicked();
    /// Closes.
    void on_cancel_clicked();

private:
    void answer(const QString& text);

    std::unique_ptr<Ui_CustomResolution> ui;
    QString custom_text;
};
