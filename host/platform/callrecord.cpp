// The recorder that is listening, and how arguments are written.
#include "host/platform/callrecord.h"

#include "host/platform/codepage.h"
#include "host/platform/number.h"

namespace qrs::platform {

namespace {
CallRecorder* newest = nullptr;
}

CallRecorder::CallRecorder() : previous_(newest) {
    newest = this;
}

CallRecorder::~CallRecorder() {
    newest = previous_;
}

bool CallRecorder::isRecording() {
    return newest != nullptr;
}

void CallRecorder::record(std::string call) {
    if (newest) newest->calls_.push_back(std::move(call));
}

std::string recordedText(const std::wstring& text) {
    return toUtf8(text);
}

std::string recordedReal(double value) {
    return formatReal(value);
}

}  // namespace qrs::platform
