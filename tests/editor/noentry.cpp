// A library that is no plug-in: it only uses one.
#if defined(_WIN32)
extern "C" __declspec(dllexport) int answer();
extern "C" __declspec(dllimport) int pluginAnswer();
#else
extern "C" __attribute__((visibility("default"))) int answer();
extern "C" int pluginAnswer();
#endif

int answer() {
    return pluginAnswer();
}
