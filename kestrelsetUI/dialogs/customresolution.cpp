#include "dialogs/customresolution.h"

#include "dialogs/fit_text.h"
#include "ui_customresolution.h"

#include <algorithm>

namespace {

constexpr int lowestDpi = 72;

} // namespace

CustomResolution::CustomResolution(QWidget* parent)
    : QDialog(parent), ui(std::make_unique<Ui_CustomResolution>())
{
    ui->setupUi(this);
    setFixedSize(size());
    kestrel::fitText(*ui->label);
    setCustomResolution(QString());
}

CustomResolution::~CustomResolution() = default;

void CustomResolution::setCustomResolution(QString text)
{
    custom_text = text;
    const bool exists = !custom_text.isEmpty();
    ui->add->setVisible(!exists);
    ui->modify->setVisible(exists);
    ui->remove->setEnabled(exists);
    // The Enter key goes to the button that takes the number, never to the one that removes the
    // entry.
    QPushButton* const taking = exists ? ui->modify : ui->add;
    taking->setDefault(true);
    // Whoever types a number replaces the one before.
    ui->spinBox_resolution->setFocus(Qt::OtherFocusReason);
    ui->spinBox_resolution->selectAll();
}

void CustomResolution::setResolutionRange(int maximum)
{
    // The answer would go to the list of a scanner that nobody has asked about.
    if (isVisible()) {
        reject();
    }
    ui->label->setText(tr("[ 范围：72 ～ %1 dpi ]").arg(maximum));
    // A scanner that claims less than the minimum must not pull the minimum down with it.
    ui->spinBox_resolution->setMaximum(std::max(maximum, lowestDpi));
}

void CustomResolution::on_add_clicked()
{
    answer(QStringLiteral("custom-%1").arg(ui->spinBox_resolution->value()));
}

void CustomResolution::on_modify_clicked()
{
    on_add_clicked();
}

void CustomResolution::on_remove_clicked()
{
    answer(QString());
}

void CustomResolution::on_cancel_clicked()
{
    close();
}

void CustomResolution::answer(const QString& text)
{
    custom_text = text;
    emit getCustomResolution(text);
    close();
}
