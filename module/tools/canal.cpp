// The settings of pipe canals, kept per user.
#include "PwxTool.h"
#include "qrs_reg.h"

namespace {

TRegKey settings() {
    return TRegKey(GetRegLocation(L"PipeCanalSetting"));
}

}  // namespace

namespace PwxTool {

double GetPipeCanalBreakDist() {
    return settings().GetDouble(L"PipeCanalBreakDist", 2.0);
}
void SetPipeCanalBreakDist(double value) {
    settings().WriteDouble(L"PipeCanalBreakDist", value);
}

int GetPipeCanalElevationPrecision() {
    return settings().GetInteger(L"PipeCanalElevationPrecision", 3);
}
void SetPipeCanalElevationPrecision(int value) {
    settings().WriteInteger(L"PipeCanalElevationPrecision", value);
}

int GetPipeCanalGradientDimType() {
    return settings().GetInteger(L"PipeCanalGradientDimType", 0);
}
void SetPipeCanalGradientDimType(int value) {
    settings().WriteInteger(L"PipeCanalGradientDimType", value);
}

int GetPipeCanalLenDimType() {
    return settings().GetInteger(L"PipeCanalLenDimType", 1);
}
// Callers are linked against the small "d"; the value's name has a capital one.
void SetPipeCanalLendimType(int value) {
    settings().WriteInteger(L"PipeCanalLenDimType", value);
}

}  // namespace PwxTool
