/// @file
/// The template manager: adds, renames, removes and resets user templates.
#pragma once

#include "settings/settings_file.h"

#include <QDialog>
#include <QString>

#include <memory>

class AddUserTemplate;
class Ui_EditTemplate;

/// Keeps the template list of the settings file in step with its combo box. The entries below the
/// preset count ("自订") can be neither removed nor renamed.
///
/// One object per main dialog, run modally whenever the user asks for it. Trouble with the file is
/// never reported: the manager goes on with what it holds in memory.
class Q_DECL_EXPORT EditTemplate : public QDialog
{
    Q_OBJECT

public:
    /// @param parent the main dialog; owns the manager. May be null.
    explicit EditTemplate(QWidget* parent = nullptr);
    ~EditTemplate() override;
    Q_DISABLE_COPY_MOVE(EditTemplate)

    /// Opens the settings file and fills the combo with its template list. May be called again for
    /// another device; where a name is being asked for then, that is cancelled.
    /// @param path the INI file; without a usable file at @p path the manager works in memory.
    void setPathINI(QString path);

    /// Copies the keys that a rename carries from one template's group to another's; a key that is
    /// missing there is written as an empty text.
    /// @param from the group to read; it stays
    /// @param to the group to write
    void renameUserTemplate(QString from, QString to);

signals:
    /// A template has been added: whoever holds the controls writes them into its group.
    /// @param name of the template and of its group
    void addUserTemplate(QString name);
    /// The manager closes.
    /// @param changed something was removed, renamed or reset since it last closed
    void resetCurrentUserTemplate(bool changed);

public slots:
    /// Asks for a name and adds a template, a copy of what the main dialog shows.
    void on_template_add_clicked();
    /// Removes the selected template and its group.
    void on_template_remove_clicked();
    /// Asks for a new name of the selected template.
    void on_template_rename_clicked();
    /// Removes all templates; the presets stay.
    void on_template_reset_clicked();
    /// Closes the manager.
    void on_template_reset_2_clicked();
    /// Escape leaves the manager the same way as its button does.
    void reject() override;

    /// @cond INTERNAL
protected:
    void closeEvent(QCloseEvent* event) override;

private:
    bool askName();
    QString listText() const;
    void removeGroup(const QString& templateName);

    std::unique_ptr<Ui_EditTemplate> ui;
    kestrel::SettingsHandle
        settings; ///< its own object on the file that the main dialog has open, too
    AddUserTemplate* name_dialog = nullptr; ///< child
    bool name_wanted = false;               ///< for the list that is on show
    int preset_count = 1;
    bool changed = false;
    /// @endcond
};
