#include "scanner/status_text.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

TEST(StatusText, EveryFailureHasItsWords)
{
    const std::vector<std::pair<int, std::string>> rows{
        {1, "扫描仪状态错误"},
        {2, "扫描仪状态错误"},
        {3, "扫描仪忙，请稍后再试"},
        {4, "数据无效，没有打开的设备"},
        {5, "扫描仪状态错误"},
        {6, "文档进纸器被卡住"},
        {7, "没有纸张"},
        {8, "扫描仪的盖子被打开"},
        {9, "扫描仪输入输出错误，可能扫描仪已断开"},
        {10, "扫描仪状态错误"},
        {11, "对资源的访问已被拒绝"},
    };
    for (const auto& [status, text] : rows) {
        const char* const found = kestrel::statusText(static_cast<SANE_Status>(status));
        ASSERT_NE(found, nullptr) << status;
        EXPECT_EQ(found, text) << status;
    }
}

TEST(StatusText, SuccessAndUnknownStatusesHaveNone)
{
    for (const int status : {0, 12, 13, 15}) {
        EXPECT_EQ(kestrel::statusText(static_cast<SANE_Status>(status)), nullptr) << status;
    }
}
