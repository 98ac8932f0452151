/// @file
/// Running kestrel-scan on the simulated scanner and looking at what it leaves.
#pragma once

#include "backend/sim_env.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <vector>

namespace kestrel::test {

/// @return the pages that a PDF has, counted by their objects
inline int pdfPages(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return -1;
    }
    return file.readAll().count("/Type /Page\n");
}

/// One folder for all that a run leaves, and the runs.
class Program : public testing::Test
{
protected:
    struct Run
    {
        int exitCode = -1;
        QString out;
        QString err;
    };

    /// @param config the simulator's configuration
    Run run(const std::string& config, const QStringList& arguments)
    {
        const SimEnv environment(config);
        QProcess process;
        process.start(KESTREL_SCAN_PROGRAM,
                      QStringList{"--config-dir", path("settings")} + arguments);
        EXPECT_TRUE(process.waitForFinished(120'000));
        EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
        m_journal = environment.journal();
        return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
                QString::fromUtf8(process.readAllStandardError())};
    }

    QString path(const QString& name) const { return m_dir.filePath(name); }

    QStringList pages(const QString& folder = "pages") const
    {
        return QDir(path(folder)).entryList({"page-*.png"}, QDir::Files, QDir::Name);
    }

    QImage page(const QString& folder, int number) const
    {
        return QImage(path(folder) + '/' + pages(folder).value(number));
    }

    const std::vector<std::string>& journal() const { return m_journal; }

private:
    QTemporaryDir m_dir;
    std::vector<std::string> m_journal;
};

} // namespace kestrel::test
