/// @file
/// What every fuzzer stands on: an application without a screen, somebody who answers what is
/// asked, a folder in memory.
#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QTemporaryDir>

#include <cstdint>
#include <functional>

class QDialog;
class QMessageBox;

namespace kestrel::fuzz {

/// Makes the application when there is none yet; a Qt warning is a finding from then on.
void start();

/// Reports a finding: prints @p what and aborts.
[[noreturn]] void fail(const char* what);

/// A property that has to hold.
inline void require(bool holds, const char* what)
{
    if (!holds) {
        fail(what);
    }
}

/// Answers every message box and leaves every other modal dialog while it lives, so that nothing
/// waits for a user. The settings dialog itself is not touched.
class Answers : public QObject
{
public:
    /// @param bits one for each box in turn: 1 agrees, 0 closes it
    explicit Answers(std::uint32_t bits = 0);
    ~Answers() override;
    Q_DISABLE_COPY_MOVE(Answers)

    /// What happens in other modal dialogs before they are left.
    void whenDialogOpens(std::function<void(QDialog&)> act) { m_act = std::move(act); }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void answer(QMessageBox& box);
    void leave(QDialog& dialog);

    std::uint32_t m_bits;
    std::function<void(QDialog&)> m_act;
};

/// A folder for settings files that no run had before: the toolkit remembers files by their path.
class Folder
{
public:
    Folder();

    const char* path() const { return m_path.constData(); }
    QString file(const char* name) const;
    void write(const char* name, const QByteArray& bytes) const;

private:
    QTemporaryDir m_dir;
    QByteArray m_path;
};

} // namespace kestrel::fuzz

/// One run. Declared here because no header of the fuzzing library does.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
