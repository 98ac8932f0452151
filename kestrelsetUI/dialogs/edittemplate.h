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
    /// another device.
    /// @param path the INI file; without a usable file at @p path the manager works in memory.
    void setPathINI(QString path);

    /// Copies the keys that a rename carries from one template's group to another's; a key missing
    /// in
    /// @p from is written as an empty text. The group @p from stays.
    void renameUserTemplate(QString from, QString to);

signals:
    /// A template has been added: whoever holds the controls writes them into the group of that
    /// name.
    void addUserTemplate(QString name);
    /// The manager closes. @p changed: something was removed, renamed or reset since it last
    /// closed.
    void resetCurrentUserTemplate(bool changed);

public slots:
    void on_template_add_clicked();
    void on_template_remove_clicked();
    void on_template_rename_clicked();
    void on_template_reset_clicked();
    void on_template_reset_2_clicked();
    /// Escape leaves the manager the same way as its button does.
    void reject() override;

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
    int preset_count = 1;
    bool changed = false;
};
