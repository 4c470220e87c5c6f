// A library that is no plug-in.
#if defined(_WIN32)
extern "C" __declspec(dllexport) int answer();
#else
extern "C" __attribute__((visibility("default"))) int answer();
#endif

int answer() {
    return 42;
}
