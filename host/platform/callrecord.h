// Keeps the calls a plug-in makes to the host, so that their order can be looked at.
#pragma once

#include <string>
#include <vector>

#include "host/platform/port.h"

namespace qrs::platform {

// While one lives, recorded calls are appended to it in the order they are made; only the newest one records.
//
//     CallRecorder recorder;
//     application.loadPlugin(path);
//     for (const std::string& call : recorder.calls()) std::puts(call.c_str());
//
// A call reads "Class::function(argument, argument)", texts in UTF-8 without quotes.
class QRS_HOST_PORT CallRecorder {
  public:
    CallRecorder();
    ~CallRecorder();
    CallRecorder(const CallRecorder&) = delete;
    CallRecorder& operator=(const CallRecorder&) = delete;

    const std::vector<std::string>& calls() const { return calls_; }
    void clear() { calls_.clear(); }

    static bool isRecording();
    static void record(std::string call);

  private:
    CallRecorder* previous_;
    std::vector<std::string> calls_;
};

// Records name(arguments...) when somebody listens; costs one test otherwise. Arguments are std::string, std::wstring,
// const wchar_t*, integers or doubles (a whole one ends in ".0").
QRS_HOST_PORT std::string recordedText(const std::wstring& text);
QRS_HOST_PORT std::string recordedReal(double value);
inline std::string recordedText(const std::string& text) {
    return text;
}
inline std::string recordedText(const char* text) {
    return text;
}
inline std::string recordedText(const wchar_t* text) {
    return recordedText(std::wstring(text ? text : L""));
}
inline std::string recordedText(long long value) {
    return std::to_string(value);
}
inline std::string recordedText(int value) {
    return std::to_string(value);
}
inline std::string recordedText(double value) {
    return recordedReal(value);
}
inline std::string recordedText(unsigned value) {
    return std::to_string(value);
}

template <typename... Arguments>
void recordCall(const char* name, const Arguments&... arguments) {
    if (!CallRecorder::isRecording()) return;
    std::string call(name);
    call += '(';
    [[maybe_unused]] const char* separator = "";
    ((call += separator, call += recordedText(arguments), separator = ", "), ...);
    call += ')';
    CallRecorder::record(std::move(call));
}

}  // namespace qrs::platform
