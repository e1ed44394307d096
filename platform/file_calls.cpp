#include "platform/file_calls.h"

namespace platform {

namespace {

FileCalls& systemCalls() {
    static FileCalls calls;
    return calls;
}

FileCalls* g_replacement = nullptr;

} // namespace

FileCalls::~FileCalls() = default;

void setFileCalls(FileCalls* calls) { g_replacement = calls; }
FileCalls& fileCalls() { return g_replacement == nullptr ? systemCalls() : *g_replacement; }

} // namespace platform
