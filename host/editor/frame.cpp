// Message filters, the progress meter, and the windows of the editor, of which there are none.
#include "host/editor/frame.h"

#include <algorithm>

#include "host/editor/hostapp.h"
#include "host/editor/reactors.h"
#include "host/editor/session.h"
#include "host/platform/callrecord.h"

using qrs::host::ed::Session;
using qrs::platform::recordCall;

namespace qrs::host::ed {

bool Frame::addFilter(AcedFilterWinMsgFn filter) {
    const auto same = [&](const Filter& one) { return one.function == filter; };
    if (!filter || std::any_of(filters_.begin(), filters_.end(), same)) return false;
    filters_.push_back(Filter{filter, activeApplication()});
    return true;
}

bool Frame::removeFilter(AcedFilterWinMsgFn filter) {
    const auto place =
        std::find_if(filters_.begin(), filters_.end(), [&](const Filter& one) { return one.function == filter; });
    if (place == filters_.end()) return false;
    filters_.erase(place);
    return true;
}

std::size_t Frame::removeFiltersOf(const void* application) {
    const auto rest = std::remove_if(filters_.begin(), filters_.end(),
                                     [&](const Filter& one) { return one.application == application; });
    const std::size_t count = static_cast<std::size_t>(filters_.end() - rest);
    filters_.erase(rest, filters_.end());
    return count;
}

bool Frame::setMeter(Terminal& terminal, const ACHAR* label, int minimum, int maximum) {
    if (minimum >= maximum) return false;
    meterLabel_ = label ? label : L"";
    meterMinimum_ = minimum;
    meterMaximum_ = maximum;
    meterPercent_ = 0;
    meterShown_ = true;
    terminal.progress(meterLabel_, 0);
    return true;
}

bool Frame::setMeterPosition(Terminal& terminal, int position) {
    if (!meterShown_) return false;
    const long long range = static_cast<long long>(meterMaximum_) - meterMinimum_;
    const long long done = static_cast<long long>(std::clamp(position, meterMinimum_, meterMaximum_)) - meterMinimum_;
    const int percent = static_cast<int>(done * 100 / range);
    // Programs set the position for every object they touch; only what can be seen is passed on.
    if (percent != meterPercent_) terminal.progress(meterLabel_, percent);
    meterPercent_ = percent;
    return true;
}

void Frame::clearMeter(Terminal& terminal) {
    if (meterShown_) terminal.progress(meterLabel_, -1);
    meterShown_ = false;
}

}  // namespace qrs::host::ed

BOOL acedRegisterFilterWinMsg(const AcedFilterWinMsgFn filter) {
    recordCall("acedRegisterFilterWinMsg");
    Session* session = Session::current();
    return session && session->frame.addFilter(filter) ? TRUE : FALSE;
}

BOOL acedRemoveFilterWinMsg(const AcedFilterWinMsgFn filter) {
    recordCall("acedRemoveFilterWinMsg");
    Session* session = Session::current();
    return session && session->frame.removeFilter(filter) ? TRUE : FALSE;
}

CMDIFrameWnd* acedGetAcadFrame() {
    return nullptr;
}

CView* acedGetAcadDwgView() {
    return nullptr;
}

void acedUpdateDisplay() {
    // Nothing is drawn, so there is nothing to bring up to date; callers of the call recorder still see the wish.
    recordCall("acedUpdateDisplay");
}

int acedSetStatusBarProgressMeter(const ACHAR* label, int minimum, int maximum) {
    Session* session = Session::current();
    return session && session->frame.setMeter(session->output.terminal(), label, minimum, maximum) ? 0 : -1;
}

int acedSetStatusBarProgressMeterPos(int position) {
    Session* session = Session::current();
    return session && session->frame.setMeterPosition(session->output.terminal(), position) ? 0 : -1;
}

void acedRestoreStatusBar() {
    if (Session* session = Session::current()) session->frame.clearMeter(session->output.terminal());
}
