#include "support/host.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include <cstring>

namespace kestrel::test {

ScannerIdentity identity(const char* name, const char* backend, std::uint32_t vid,
                         std::uint32_t pid)
{
    ScannerIdentity record{};
    record.vid = vid;
    record.pid = pid;
    std::strncpy(record.name, name, sizeof record.name - 1);
    std::strncpy(record.backend, backend, sizeof record.backend - 1);
    return record;
}

TempConfigDir::TempConfigDir() : m_path(m_dir.path().toUtf8())
{
    EXPECT_TRUE(m_dir.isValid()) << m_dir.errorString().toStdString();
}

QString TempConfigDir::file(const QString& name) const
{
    return QDir(m_dir.path()).filePath(name);
}

QByteArray TempConfigDir::read(const QString& name) const
{
    QFile file(this->file(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void TempConfigDir::write(const QString& name, const QByteArray& bytes) const
{
    QFile file(this->file(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << name.toStdString();
    ASSERT_EQ(file.write(bytes), bytes.size());
}

} // namespace kestrel::test
