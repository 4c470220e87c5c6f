// The library beside the program that hangs on those that pictures are drawn with.
#include "host/platform/port.h"
#include "host/plot/drawcalls.h"

extern "C" QRS_HOST_PORT const qrs::host::plot::DrawCalls* qrsDrawCalls();

const qrs::host::plot::DrawCalls* qrsDrawCalls() {
    static const qrs::host::plot::DrawCalls calls = {
#define QRS_DRAW_CALL(name) &::name,
        QRS_DRAW_CALLS(QRS_DRAW_CALL)
#undef QRS_DRAW_CALL
    };
    return &calls;
}
