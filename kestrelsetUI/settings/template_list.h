/// @file
/// The text that holds the names of all templates.
#pragma once

#include <QString>
#include <QStringList>

namespace kestrel {

/// @return the names in @p text in order; empty parts between the separators are no names.
QStringList splitTemplateList(const QString& text);

/// @return @p names joined with ";", without a separator at either end.
QString joinTemplateList(const QStringList& names);

/// @return @p text with @p name behind it; what stands in @p text stays as it is.
QString appendTemplate(const QString& text, const QString& name);

/// The group of the settings file that belongs to a template or device name: the name itself, but
/// for the spellings of "General" that the INI layer would read back as another group.
QString groupName(const QString& name);

/// The group that holds the list of templates and which of them is selected.
QString templateListGroup();

/// In that group: the names, the number of the selected one, and how many of them are presets.
inline const QLatin1String templateListKey("usertemplate");
inline const QLatin1String templateIndexKey("usertemplate_index");
inline const QLatin1String presetCountKey("preset_template_num");

/// The first entry of every list: the working configuration.
QString workingEntry();

/// @return the groups of the templates @p names, and templateListGroup().
QStringList groupsOf(const QStringList& names);

} // namespace kestrel
