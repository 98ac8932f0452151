/// @file
/// A group of a settings object, open for as long as it is needed.
#pragma once

#include <QSettings>

namespace kestrel {

/// Opens a group, and closes it whatever happens: an object with a group open can't be saved.
class OpenGroup
{
public:
    OpenGroup(QSettings& settings, const QString& name) : settings(settings)
    {
        settings.beginGroup(name);
    }
    ~OpenGroup() { settings.endGroup(); }
    Q_DISABLE_COPY_MOVE(OpenGroup)

private:
    QSettings& settings;
};

} // namespace kestrel
