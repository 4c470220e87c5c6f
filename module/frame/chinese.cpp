// What this room tells of files, in Chinese. What commands say is stated in Chinese alone.
#include "host/platform/language.h"

namespace qrs::platform {

namespace {

constexpr Translation kRows[] = {
    {"%1: line 1: the root element is not %2", "%1：第 1 行：根元素不是 %2"},
    {"\n%1. As if there were no %2.\n", "\n%1。按没有 %2 处理。\n"},
    {"\nSpecData.xml: fittings without a name or a number, left out: %1\n",
     "\nSpecData.xml 中有 %1 个管件缺少名称或数值，已忽略。\n"},
};

const Translations kTexts(kRows);

}  // namespace

}  // namespace qrs::platform
