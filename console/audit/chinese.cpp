// The texts of --check, --repair and --pipes in Chinese.
#include "host/platform/language.h"

namespace qrs::console {

namespace {

constexpr platform::Translation kRows[] = {
    {"Tell how far the drawings are from the standard, and run nothing else", "说明图形与标准相差多少，不运行其他命令"},
    {"Mend what a file of mappings says, or with auto what has one answer, and run nothing else",
     "按对照表修改图形，给 auto 时修改只有一个答案的问题，不运行其他命令"},
    {"Tell what pipes the drawings hold, and run nothing else", "统计图中的管线，不运行其他命令"},
    {"Form of that report: text, json, html (--check), csv (--pipes); without it the ending of --to tells",
     "报告的形式：text、json、html（--check）、csv（--pipes）；不给时由 --to 的扩展名决定"},
    {"Write that report to this file instead of standard output", "报告写到该文件，而不是标准输出"},
    {"The severities of the rules of --check, a rule and a severity a line",
     "--check 各规则的严重程度，每行一条规则和一个程度"},
    {"Check external references, too", "外部参照一并检查"},
    {"Only tell what --repair would change", "只说明 --repair 会改动什么"},
    {"%1 needs one of: %2", "%1 需要其中之一：%2"},
    {"--form of %1 is one of: %2", "%1 的 --form 应为其中之一：%2"},
    {"--repair needs --output, --in-place or --dry-run", "--repair 需要 --output、--in-place 或 --dry-run"},
    {"--to of --repair needs one drawing", "--repair 的 --to 只用于一张图形"},
};

const platform::Translations kTexts(kRows);

}  // namespace

}  // namespace qrs::console
