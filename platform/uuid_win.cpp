#include "platform/uuid.h"

#include <rpc.h>

#include <cstring>

#pragma comment(lib, "rpcrt4.lib")

namespace platform {

namespace {

UUID systemUuid(const Uuid& uuid) {
    static_assert(sizeof(UUID) == sizeof(Uuid), "one layout");
    UUID result;
    std::memcpy(&result, &uuid, sizeof result);
    return result;
}

UuidCalls* g_replacement = nullptr;

UuidCalls& systemCalls() {
    static UuidCalls calls;
    return calls;
}

} // namespace

UuidCalls::~UuidCalls() = default;

void setUuidCalls(UuidCalls* calls) { g_replacement = calls; }
UuidCalls& uuidCalls() { return g_replacement == nullptr ? systemCalls() : *g_replacement; }

int UuidCalls::createSequential(Uuid& uuid) {
    UUID made = {};
    const RPC_STATUS status = UuidCreateSequential(&made);
    std::memcpy(&uuid, &made, sizeof uuid);
    return static_cast<int>(status);
}

bool UuidCalls::isNil(const Uuid& uuid, int& status) {
    UUID tested = systemUuid(uuid);
    RPC_STATUS answered = 0;
    const bool nil = UuidIsNil(&tested, &answered) != 0;
    status = static_cast<int>(answered);
    return nil;
}

int UuidCalls::toText(const Uuid& uuid, char*& text) {
    const UUID written = systemUuid(uuid);
    RPC_CSTR made = nullptr;
    const RPC_STATUS status = UuidToStringA(&written, &made);
    text = status == RPC_S_OK ? reinterpret_cast<char*>(made) : nullptr;
    return static_cast<int>(status);
}

void UuidCalls::freeText(char*& text) {
    auto* given = reinterpret_cast<RPC_CSTR>(text);
    RpcStringFreeA(&given);
    text = nullptr;
}

} // namespace platform
