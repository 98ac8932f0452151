/// @file
/// The dialog that asks for the name of a user template.
#pragma once

#include <QDialog>
#include <QString>

#include <memory>

class Ui_AddUserTemplate;

/// Lets only names through that can be an INI group and an entry of a ";"-separated list. Read the
/// result with getTemplateName() when exec() says that a name was accepted: an empty one is none.
class Q_DECL_EXPORT AddUserTemplate : public QDialog
{
    Q_OBJECT

public:
    /// @param parent owns the dialog; may be null.
    explicit AddUserTemplate(QWidget* parent = nullptr);
    ~AddUserTemplate() override;
    Q_DISABLE_COPY_MOVE(AddUserTemplate)

    /// @return the text of the line edit, as typed: spaces around it belong to the name.
    QString getTemplateName();
    /// Empties the line edit.
    void clearLineEdit();
    /// Offers a name, for instance the old one when renaming.
    /// @param text the name
    void setLineEdit(QString text);
    /// Gives the line edit the focus and selects all its text.
    void setLineEditFocus();

public slots:
    /// OK: closes with a name that is allowed; with any other the user is told what is wrong.
    void on_pushButton_clicked();
    /// Cancel: closes without a name.
    void on_pushButton_2_clicked();
    /// Escape and the close box are the Cancel button: no name gets out.
    void reject() override;

private:
    std::unique_ptr<Ui_AddUserTemplate> ui;
};
