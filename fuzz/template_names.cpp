// Names of templates: what the name dialog lets through is there after a restart, with its group,
// whatever the list in the file looked like before.
#include "bench.h"
#include "dialogs/addusertemplate.h"
#include "dialogs/edittemplate.h"
#include "input.h"
#include "settings/settings_file.h"
#include "settings/template_list.h"

#include <QComboBox>
#include <QDialog>
#include <QHash>
#include <QSettings>

#include <algorithm>
#include <memory>
#include <vector>

using namespace kestrel::fuzz;

namespace {

constexpr int kMostSteps = 24;
const QString kKey = QStringLiteral("resolution"); // one of those that a rename carries
const QString kForbidden = QStringLiteral("\":;`!%\\/");

/// Any text: UTF-8 as it is typed, or 16-bit units as a program may give them.
QString anyName(Input& input)
{
    static const std::vector<QString> kNames = {
        QStringLiteral("General"),       QStringLiteral("general"), QStringLiteral("UserTemplates"),
        QStringLiteral("usertemplate"),  QStringLiteral("自订"),    QStringLiteral("button1"),
        QStringLiteral("@Variant(\\0)"), QStringLiteral("@@"),      QStringLiteral("@String(a)"),
        QStringLiteral("[x]"),           QStringLiteral("a=b"),     QStringLiteral("#"),
        QStringLiteral(" x "),           QStringLiteral(","),       QStringLiteral("a,b")};
    switch (input.byte() % 4) {
    case 0:
        return input.pick(kNames);
    case 1: {
        QString units;
        for (int count = input.below(32); count > 0; --count) {
            const auto high = static_cast<unsigned>(input.byte()) << 8U;
            units += QChar(static_cast<ushort>(high | input.byte()));
        }
        return units;
    }
    default:
        return QString::fromUtf8(QByteArray::fromStdString(input.text(60)));
    }
}

/// One settings file with a manager on it, and what has to be in there.
class Session
{
public:
    explicit Session(Input& input) : m_input(input)
    {
        m_answers.whenDialogOpens([this](QDialog& dialog) { typeName(dialog); });
        if (m_input.flag()) { // a list that somebody has written
            QString list;
            if (m_input.flag()) {
                list = QString::fromUtf8(QByteArray::fromStdString(m_input.text(200)));
            } else {
                list = anyName(m_input) + QLatin1Char(';');
                list += anyName(m_input);
            }
            QSettings settings(file(), QSettings::IniFormat);
            settings.setValue(QStringLiteral("UserTemplates/usertemplate"), list);
        } else if (m_input.flag()) {
            m_folder.write("t.ini", "[UserTemplates]\nusertemplate=" +
                                        QByteArray::fromStdString(m_input.text(200)) + '\n');
        }
        dropEmptyList();
        restart();
    }

    void run()
    {
        for (int step = 0; step < kMostSteps && !m_input.isEmpty(); ++step) {
            doSomething();
            if (m_input.flag()) {
                checkRestart();
            }
        }
        checkRestart();
        checkGroups();
    }

private:
    QString file() const { return m_folder.file("t.ini"); }
    QComboBox& list() const
    {
        return *m_manager->findChild<QComboBox*>(QStringLiteral("usertemplate"));
    }
    QStringList names() const
    {
        QStringList texts;
        for (int i = 0; i < list().count(); ++i) {
            texts.append(list().itemText(i));
        }
        return texts;
    }

    /// A list of separators alone stays one when a name is put behind it: nothing to hold on to.
    void dropEmptyList()
    {
        QSettings settings(file(), QSettings::IniFormat);
        const QString key = QStringLiteral("UserTemplates/usertemplate");
        if (kestrel::splitTemplateList(settings.value(key).toString()).isEmpty()) {
            settings.remove(key);
        }
    }

    void restart()
    {
        m_manager = std::make_unique<EditTemplate>();
        QObject::connect(m_manager.get(), &EditTemplate::addUserTemplate, m_manager.get(),
                         [this](const QString& name) { writeGroup(name); });
        m_manager->setPathINI(file());
    }

    void checkRestart()
    {
        const QStringList before = names();
        restart();
        if (names() != before) {
            const QLatin1Char bar('|');
            fail(qPrintable(QStringLiteral("a restart gives other names: %1 for %2")
                                .arg(names().join(bar), before.join(bar))));
        }
    }

    /// What the settings dialog does when a template is added.
    void writeGroup(const QString& name)
    {
        const auto settings = kestrel::openSettings(file());
        settings->setValue(kestrel::groupName(name) + QLatin1Char('/') + kKey, ++m_lastValue);
        require(kestrel::saveSettings(*settings), "a group is not saved");
        m_groups.insert(name, QString::number(m_lastValue));
    }

    /// Another program's list may hold anything; what a rename or a removal does to its groups is
    /// not followed.
    static bool isOurs(const QString& name)
    {
        return std::none_of(kForbidden.begin(), kForbidden.end(),
                            [&name](QChar c) { return name.contains(c); });
    }

    void typeName(QDialog& dialog)
    {
        auto* const question = qobject_cast<AddUserTemplate*>(&dialog);
        if (question == nullptr) {
            return;
        }
        if (m_input.byte() % 16 != 0) {
            question->setLineEdit(anyName(m_input));
        }
        const QString typed = question->getTemplateName();
        question->on_pushButton_clicked();
        const bool accepted = !question->isVisible();
        require(accepted == (typed.size() <= 30 && isOurs(typed)), "another rule than it is said");
        require(!accepted || question->getTemplateName() == typed,
                "the name is changed on its way");
    }

    void doSomething()
    {
        const int index = list().count() > 0 ? m_input.below(list().count()) : -1;
        switch (m_input.byte() % 8) {
        case 0: {
            list().setCurrentIndex(index);
            const QString name = list().currentText();
            const int before = list().count();
            m_manager->on_template_remove_clicked();
            if (list().count() < before) {
                m_groups.remove(name);
                m_foreign = m_foreign || !isOurs(name);
            }
            break;
        }
        case 1: {
            list().setCurrentIndex(index);
            const QString from = list().currentText();
            m_manager->on_template_rename_clicked();
            const QString to = list().currentText();
            m_foreign = m_foreign || !isOurs(from) || from == to;
            if (from != to) {
                const QString value = m_groups.take(from);
                m_groups.insert(to, value);
            }
            break;
        }
        case 2:
            m_manager->on_template_reset_clicked();
            m_groups.clear();
            // The file then names the working entry alone, whatever stood there first.
            if (list().count() == 1 && list().itemText(0) != m_working) {
                restart();
            }
            break;
        case 3:
            m_manager->close();
            break;
        default:
            m_manager->on_template_add_clicked();
        }
    }

    void checkGroups()
    {
        if (m_foreign) {
            return;
        }
        const auto settings = kestrel::openSettings(file());
        for (auto group = m_groups.cbegin(); group != m_groups.cend(); ++group) {
            require(settings->value(kestrel::groupName(group.key()) + QLatin1Char('/') + kKey)
                            .toString() == group.value(),
                    "a template has lost what it held");
        }
    }

    Input& m_input;
    Answers m_answers;
    Folder m_folder;
    std::unique_ptr<EditTemplate> m_manager;
    const QString m_working = QStringLiteral("自订");
    QHash<QString, QString> m_groups; ///< what the group of each template has to hold
    int m_lastValue = 0;
    bool m_foreign = false; ///< a name that is none of ours was touched
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    Input input(data, size);
    Session(input).run();
    return 0;
}
