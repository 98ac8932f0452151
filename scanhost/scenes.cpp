#include "scenes.h"

#include "dialog_hand.h"
#include "main_window.h"

#include <QAbstractButton>
#include <QCoreApplication>
#include <QDialog>
#include <QDir>
#include <QMessageBox>
#include <QTextStream>
#include <QTimer>

#include <cmath>

namespace kestrel {

namespace {

// A scanner rounds to whole pixels, the preview has few of them, and the dialog shows tenths.
constexpr double kAreaTolerance = 1.0;

void sayYes(QWidget* question, QString& problem)
{
    auto* box = qobject_cast<QMessageBox*>(question);
    QAbstractButton* yes = box != nullptr ? box->button(QMessageBox::Yes) : nullptr;
    if (yes != nullptr) {
        yes->click();
    } else if (problem.isEmpty()) {
        problem = QStringLiteral("nobody asked whether to use the area");
    }
}

void nameTemplate(QWidget* dialog, const QString& name, QString& problem)
{
    DialogHand hand(dialog, problem);
    hand.type("lineEdit", name);
    hand.click("pushButton");
}

} // namespace

Scenes::Scenes(MainWindow& window, Scene scene, const QString& folder, QObject* parent)
    : QObject(parent), m_window(window), m_scene(scene), m_folder(folder)
{
}

void Scenes::arm()
{
    connect(&m_window, &MainWindow::ready, this, &Scenes::play, Qt::QueuedConnection);
}

QString Scenes::path(const QString& name) const
{
    return QDir(m_folder).filePath(name);
}

void Scenes::play()
{
    if (!QDir().mkpath(m_folder) || !m_window.hasDevice()) {
        m_problem = QStringLiteral("no scanner or no folder");
        end();
        return;
    }
    // The dialog runs its own event loop; what is to happen in it has to be planned before.
    QDialog* dialog = m_window.settingsDialog()->dialog();
    QTimer::singleShot(0, dialog, [this, dialog] { inDialog(dialog); });
    m_window.showSettings();
    if (m_scene == Scene::Preview && m_problem.isEmpty()) {
        connect(&m_window, &MainWindow::scanEnded, this, &Scenes::keepArea, Qt::QueuedConnection);
        m_window.startScan();
        return;
    }
    end();
}

void Scenes::inDialog(QDialog* dialog)
{
    DialogHand hand(dialog, m_problem);
    switch (m_scene) {
    case Scene::FirstStart:
        firstStart(hand);
        break;
    case Scene::SecondStart:
        secondStart(hand);
        break;
    case Scene::Preview:
        selectArea(hand);
        break;
    case Scene::Templates:
        addTemplates(hand);
        break;
    }
    if (dialog->isVisible()) {
        hand.note(QStringLiteral("the dialog stays open"));
        dialog->reject();
    }
}

void Scenes::firstStart(DialogHand& hand)
{
    hand.openTab("tab_image");
    hand.choose("resolution_gengel_slide", QStringLiteral("300"));
    hand.set("front_gray", true);
    hand.set("front_color", false);
    // Which panel was looked at last is no setting; the dialog opens with that of colour.
    hand.set("color_front_image", true);
    hand.photograph(path(QStringLiteral("first-start.png")));
    hand.click("sure");
}

void Scenes::secondStart(DialogHand& hand)
{
    hand.openTab("tab_image");
    hand.photograph(path(QStringLiteral("second-start.png")));
    if (hand.chosen("resolution_gengel_slide") != QLatin1String("300") ||
        !hand.isOn("front_gray") || hand.isOn("front_color")) {
        hand.note(QStringLiteral("the settings of the first start are not there"));
    }
    hand.click("cancel");
}

void Scenes::selectArea(DialogHand& hand)
{
    hand.choose("source", QStringLiteral("平板"));
    hand.chooseFirst("autocropdeskew");
    hand.openTab("tab_preview");
    hand.click("preview");
    hand.drag("preview_box", {0.2, 0.1}, {0.7, 0.5});
    hand.photograph(path(QStringLiteral("preview-selection.png")));
    m_area = QRectF(hand.number("offset_x"), hand.number("offset_y"), hand.number("offset_w"),
                    hand.number("offset_h"));
    inNextDialog(this, [this](QWidget* question) { sayYes(question, m_problem); });
    hand.click("sure");
}

void Scenes::keepArea()
{
    const std::vector<Page>& pages = m_window.pages();
    if (pages.size() != 1 || !m_window.message().isEmpty()) {
        m_problem = QStringLiteral("%1 pages; %2").arg(pages.size()).arg(m_window.message());
        end();
        return;
    }
    const QSizeF page = pageSizeMm(pages.front());
    QTextStream(stdout) << QStringLiteral("Area %1 x %2 mm at %3, %4, page %5 x %6 mm\n")
                               .arg(m_area.width(), 0, 'f', 1)
                               .arg(m_area.height(), 0, 'f', 1)
                               .arg(m_area.x(), 0, 'f', 1)
                               .arg(m_area.y(), 0, 'f', 1)
                               .arg(page.width(), 0, 'f', 1)
                               .arg(page.height(), 0, 'f', 1);
    if (std::abs(page.width() - m_area.width()) > kAreaTolerance ||
        std::abs(page.height() - m_area.height()) > kAreaTolerance) {
        m_problem = QStringLiteral("the page is not the area");
    } else {
        m_problem = exportPages(pages, path(QStringLiteral("area.png")), FileFormat::Png);
    }
    end();
}

void Scenes::addTemplates(DialogHand& hand)
{
    hand.choose("source", QStringLiteral("文档进纸器"));
    for (const char* name : {"front_color", "front_bw", "rear_color", "rear_bw"}) {
        hand.set(name, true);
    }
    hand.set("front_gray", false);
    addTemplate(hand, QStringLiteral("button1"));

    // Closing the manager has brought back what was there before.
    hand.choose("source", QStringLiteral("平板"));
    hand.set("front_gray", true);
    hand.set("front_color", false);
    hand.set("front_bw", false);
    hand.choose("scanrange_setting", QStringLiteral("ISO A5"));
    hand.set("center_alignment", true);
    addTemplate(hand, QStringLiteral("button2"));
    hand.click("cancel");
}

void Scenes::addTemplate(DialogHand& hand, const QString& name)
{
    inNextDialog(this, [this, name](QWidget* manager) {
        DialogHand inManager(manager, m_problem);
        inNextDialog(this,
                     [this, name](QWidget* dialog) { nameTemplate(dialog, name, m_problem); });
        inManager.click("template_add");
        inManager.click("template_reset_2");
    });
    hand.click("template_setting");
    // Found only when the manager has told the dialog.
    hand.choose("usertemplate", name);
    hand.choose("usertemplate", QStringLiteral("自订"));
}

void Scenes::end()
{
    if (!m_problem.isEmpty()) {
        QTextStream(stderr) << m_problem << '\n';
    }
    m_window.discardPages();
    QCoreApplication::exit(m_problem.isEmpty() ? 0 : 1);
}

} // namespace kestrel
