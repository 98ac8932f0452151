#include "dialogs/addusertemplate.h"

#include "dialogs/fit_text.h"
#include "ui_addusertemplate.h"

#include <QMessageBox>

#include <algorithm>

namespace {

// In the order in which they are complained about. The semicolon separates the names of the
// template list.
const QLatin1String forbiddenCharacters("\":;`!%\\/");

} // namespace

AddUserTemplate::AddUserTemplate(QWidget* parent)
    : QDialog(parent), ui(std::make_unique<Ui_AddUserTemplate>())
{
    ui->setupUi(this);
    setFixedSize(size());
    kestrel::fitText(*ui->label);
}

AddUserTemplate::~AddUserTemplate() = default;

QString AddUserTemplate::getTemplateName()
{
    return ui->lineEdit->text();
}

void AddUserTemplate::clearLineEdit()
{
    ui->lineEdit->clear();
}

void AddUserTemplate::setLineEdit(QString text)
{
    ui->lineEdit->setText(text);
}

void AddUserTemplate::setLineEditFocus()
{
    ui->lineEdit->setFocus(Qt::OtherFocusReason);
    ui->lineEdit->selectAll();
}

void AddUserTemplate::on_pushButton_clicked()
{
    const int maximumLength = ui->lineEdit->maxLength();
    const QString name = ui->lineEdit->text();
    QString complaint;
    if (name.size() > maximumLength) {
        complaint = tr("文件命名长度不能超过%d个字符")
                        .replace(QLatin1String("%d"), QString::number(maximumLength));
    } else {
        const auto* const bad =
            std::find_if(forbiddenCharacters.cbegin(), forbiddenCharacters.cend(),
                         [&name](char character) { return name.contains(QLatin1Char(character)); });
        if (bad != forbiddenCharacters.cend()) {
            complaint = tr("文件名字不能含有\"%c\"").replace(QLatin1String("%c"), QString(*bad));
        }
    }
    if (!complaint.isEmpty()) {
        QMessageBox::information(nullptr, tr("提示"), complaint, QMessageBox::Ok);
        return;
    }
    accept();
}

void AddUserTemplate::on_pushButton_2_clicked()
{
    clearLineEdit();
    close();
}

void AddUserTemplate::reject()
{
    clearLineEdit();
    QDialog::reject();
}
