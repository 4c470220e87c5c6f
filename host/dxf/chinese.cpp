// This room's texts in Chinese.
#include "host/platform/language.h"

namespace qrs::platform {

namespace {

constexpr Translation kRows[] = {
    // no drawing
    {"a record of more than 4 GB", "有一个记录大于 4 GB"},
    {"too many records", "记录太多"},
    {"not a DXF file: nothing in it", "不是 DXF 文件：里面没有内容"},
    {"not a DXF file: first line is no group code", "不是 DXF 文件：第一行不是组码"},
    {"not a DXF file: 0 SECTION expected, found group code %1", "不是 DXF 文件：应为 0 SECTION，却是组码 %1"},
    {"not a DXF file: 0 SECTION expected, found %1", "不是 DXF 文件：应为 0 SECTION，却是 %1"},
    {"the file is cut off: 0 EOF is missing", "文件不完整：缺少 0 EOF"},
    {"the file is cut off: a group code or its value is not whole", "文件不完整：组码或它的值不全"},
    {"the file is cut off: no value after the last group code", "文件不完整：最后一个组码没有值"},
    {"NUL byte in a group code", "组码中有 NUL 字节"},
    {"group code expected, found \"%1\"", "应为组码，却是“%1”"},
    {"a DWG drawing of %1; save it as DXF, or name a converter (--converter)",
     "%1 版的 DWG 图形文件；请另存为 DXF，或指定转换程序（--converter）"},
    // damage
    {"another record has this handle too", "另有记录使用同一句柄"},
    {"EOF is missing", "缺少 EOF"},
    {"a number that is no group code", "有一个数字不是组码"},
    {"ENDTAB without a TABLE", "ENDTAB 没有对应的 TABLE"},
    {"ENDBLK without a BLOCK", "ENDBLK 没有对应的 BLOCK"},
    {"ENDSEC without a SECTION", "ENDSEC 没有对应的 SECTION"},
    {"ENDSEC of section %1 is missing", "段 %1 缺少 ENDSEC"},
    {"ENDTAB of a table is missing", "表缺少 ENDTAB"},
    {"ENDBLK of a block is missing", "块缺少 ENDBLK"},
    {"SEQEND of the %1 is missing", "%1 缺少 SEQEND"},
    {"%1 outside of a section", "%1 不在任何段之内"},
    {"a section without a name", "段没有名称"},
    {"the table says %1 records and holds %2", "表中写明 %1 个记录，实有 %2 个"},
    {"the polyline says %1 vertices and has %2", "多段线写明 %1 个顶点，实有 %2 个"},
    {"group code %1 points to %2, which no record is", "组码 %1 指向 %2，没有这个句柄的记录"},
    {"group code %1 has the value %2, which other programs do not read as a number",
     "组码 %1 的值为 %2，别的程序不能当作数字读取"},
    {"the block %1 lies in itself", "块 %1 含有自身"},
    {"the file is cut off between CR and LF", "文件在 CR 与 LF 之间中断"},
    {"the version %1 is not known", "版本 %1 不认识"},
    {"%1 further errors", "另有 %1 处错误"},
    // its place and its sum
    {"line %1", "第 %1 行"},
    {"byte %1", "第 %1 字节"},
    {"%1, handle %2: %3", "%1，句柄 %2：%3"},
    {"%1: %2", "%1：%2"},
    {", ", "，"},
    {"1 %1 (%2)", "1 处%1（%2）"},
    {"%1 %2 (first: %3)", "%1 处%2（首处在%3）"},
    {"1 error: %1", "1 处错误：%1"},
    {"%1 errors: %2", "%1 处错误：%2"},
    {"unknown version", "未知版本"},
    {"unknown versions", "未知版本"},
    {"cut line end", "行尾不全"},
    {"cut line ends", "行尾不全"},
    {"missing end", "缺少结束"},
    {"missing ends", "缺少结束"},
    {"stray record", "记录位置不对"},
    {"stray records", "记录位置不对"},
    {"wrong count", "数目不符"},
    {"wrong counts", "数目不符"},
    {"handle given twice", "句柄重复"},
    {"handles given twice", "句柄重复"},
    {"pointer to nothing", "指针悬空"},
    {"pointers to nothing", "指针悬空"},
    {"missing name", "缺少名称"},
    {"missing names", "缺少名称"},
    {"number that is no group code", "数字不是组码"},
    {"numbers that are no group codes", "数字不是组码"},
    {"number that other programs do not read", "数字别的程序读不懂"},
    {"numbers that other programs do not read", "数字别的程序读不懂"},
    {"block in itself", "块含有自身"},
    {"blocks in themselves", "块含有自身"},
    // not written
    {"was cut short by another program while it was read", "读取时被别的程序截短"},
    {"was saved by somebody else since this drawing was opened; not saved", "打开以后被别人保存过，没有保存"},
    {"\"%1\" has no place under group code %2 of a binary drawing", "二进制图形文件的组码 %2 放不下“%1”"},
};

const Translations kTexts(kRows);

}  // namespace

}  // namespace qrs::platform
