// This room's texts in Chinese.
#include "host/platform/language.h"

namespace qrs::platform {

namespace {

constexpr Translation kRows[] = {
    {"%1: the name of a picture ends in .svg, .pdf or .png", "%1：图片文件的名称以 .svg、.pdf 或 .png 结尾"},
    {"%1 is no paper: A0 to A5, Letter, A3-portrait and the like, 420x297 (millimetres, 1 to 20000) or fit",
     "%1 不是图纸：请用 A0 至 A5、Letter、A3-portrait 之类、420x297（毫米，1 至 20000）或 fit"},
    {"dots per inch are a number from %1 to %2", "每英寸点数是 %1 到 %2 的数"},
    {"plotting is not in this build", "本程序未包含出图功能"},
    {"pictures cannot be drawn, as a library is missing: %1", "缺少库，无法绘制图片：%1"},
    {"there is no layout \"%1\"; the drawing has %2", "没有布局“%1”；图形中有 %2"},
    {"%1: an image of %2 x %3 dots is too large; fewer dots per inch (--dpi) make it smaller",
     "%1：%2 x %3 点的图像太大；减少每英寸点数（--dpi）可使其变小"},
    {"%1: the picture cannot be made: %2", "%1：无法生成图片：%2"},
    {"%1 is a drawing that is plotted; no picture is written over it", "%1 是正在出图的图形，图片不会盖过它"},
    {"The external reference %1 cannot be found.", "找不到外部参照 %1。"},
    {"A hatch pattern too fine to be seen was drawn as an area.", "过密而无法辨认的填充图案已按实心面绘制。"},
    {"Shapes in linetypes that no file tells were left out.", "线型中没有文件说明的形已略去。"},
    {"Characters that no installed font has were drawn as boxes: %1 (%2).",
     "已安装的字体都没有的字符画成了方框：%1 个（%2）。"},
    {"There is more than can be drawn; the rest was left out.", "内容超出可绘制的数量，其余已略去。"},
    {"Only the first drawing has the layout \"%1\".", "只有第一张图有布局“%1”。"},
    {"Only the second drawing has the layout \"%1\".", "只有第二张图有布局“%1”。"},
    {"Entities of a kind that cannot be drawn: %1 x %2.", "无法绘制的图元：%1 个 %2。"},
};

const Translations kTexts(kRows);

}  // namespace

}  // namespace qrs::platform
