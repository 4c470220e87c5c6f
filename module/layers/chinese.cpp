// What this room tells of files, in Chinese. What commands say is stated in Chinese alone.
#include "host/platform/language.h"

namespace qrs::platform {

namespace {

constexpr Translation kRows[] = {
    {"The layer definitions were not written: %1", "图层定义没有写入：%1"},
};

const Translations kTexts(kRows);

}  // namespace

}  // namespace qrs::platform
