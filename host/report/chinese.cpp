// This room's texts in Chinese.
#include "host/platform/language.h"

namespace qrs::platform {

namespace {

constexpr Translation kRows[] = {
    {"Paper space", "图纸空间"},
    {"data after the end of the file", "文件结束以后的数据"},
    {"%1 number %2", "第 %2 个 %1"},
    {"%1 number %2 of %3", "%3 的第 %2 个 %1"},
};

const Translations kTexts(kRows);

}  // namespace

}  // namespace qrs::platform
