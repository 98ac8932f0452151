#include "settings/template_list.h"

namespace kestrel {

namespace {

constexpr QLatin1Char separator(';');

} // namespace

QStringList splitTemplateList(const QString& text)
{
    return text.split(separator, Qt::SkipEmptyParts);
}

QString joinTemplateList(const QStringList& names)
{
    return names.join(separator);
}

QString appendTemplate(const QString& text, const QString& name)
{
    return text + separator + name;
}

QString groupName(const QString& name)
{
    // [General] is where keys without a group stand, in any letter case; a group of that name is
    // written as [%General] whatever its spelling. A percent sign of our own is escaped and keeps
    // the spelling apart; no template name contains one.
    const QString general = QStringLiteral("General");
    if (name != general && name.compare(general, Qt::CaseInsensitive) == 0) {
        return QLatin1Char('%') + name;
    }
    return name;
}

QString templateListGroup()
{
    return QStringLiteral("UserTemplates");
}

QString workingEntry()
{
    return QStringLiteral("自订");
}

QStringList groupsOf(const QStringList& names)
{
    QStringList groups{templateListGroup()};
    for (const QString& name : names) {
        groups.append(groupName(name));
    }
    return groups;
}

} // namespace kestrel
