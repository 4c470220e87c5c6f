// What this room tells of files, in Chinese. What commands say is stated in Chinese alone.
#include "host/platform/language.h"

namespace qrs::platform {

namespace {

constexpr Translation kRows[] = {
    {"\nThe default settings folder %1 cannot be used: %2. Export to a folder of your own.\n",
     "\n不能使用默认设置目录 %1：%2。请导出到指定文件夹。\n"},
    {"\nThe default settings folder %1 cannot be used: %2. Read from a folder of your own.\n",
     "\n不能使用默认设置目录 %1：%2。请从指定目录读取。\n"},
    {"\nThe default settings folder could not be emptied: %1\n", "\n默认设置目录没有全部清空：%1\n"},
    {"%1 lies in it, so it cannot be emptied", "%1 在其中，不能清空"},
    {"it belongs to another user", "它属于其他用户"},
    {"it is a link", "它是一个链接"},
    {"it is no folder", "它不是文件夹"},
    {"%1 was not exported: %2", "没有导出 %1：%2"},
    {"%1 was not imported: %2", "没有导入 %1：%2"},
    {"%1 was not written: %2", "%1 没有写入：%2"},
    {"\n%1 was not read: %2\n", "\n%1 没有读入：%2\n"},
};

const Translations kTexts(kRows);

}  // namespace

}  // namespace qrs::platform
