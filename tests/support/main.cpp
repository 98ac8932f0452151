// main() of the tests that need no application object.
#include "support/messages.h"

#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    kestrel::test::installMessageHandler();
    return RUN_ALL_TESTS();
}
