/// @file
/// A piece of a test in a process of its own.
#pragma once

#include <gtest/gtest.h>

#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

namespace kestrel::test {

/// Runs @p body in a forked process; its failures are this test's failures.
template <typename Body>
void inChildProcess(Body body)
{
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        body();
        ::_exit(testing::Test::HasFailure() ? 1 : 0);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status)) << "killed by signal " << WTERMSIG(status);
    EXPECT_EQ(WEXITSTATUS(status), 0);
}

/// Runs @p body without root's powers.
template <typename Body>
void asOrdinaryUser(Body body)
{
    inChildProcess([body] {
        constexpr uid_t nobody = 65534;
        if (::geteuid() == 0) {
            ASSERT_EQ(::setegid(nobody), 0);
            ASSERT_EQ(::seteuid(nobody), 0);
        }
        body();
    });
}

} // namespace kestrel::test
