#include "platform/uuid.h"

#include <uuid/uuid.h>

#include <cstring>
#include <new>

namespace platform {

namespace {

constexpr int kOutOfMemory = 14;

// Here a UUID is 16 bytes, its numbers with the high byte first.
Uuid fromBytes(const uuid_t bytes) {
    Uuid uuid;
    uuid.data1 = static_cast<std::uint32_t>(bytes[0]) << 24 | static_cast<std::uint32_t>(bytes[1]) << 16 |
                 static_cast<std::uint32_t>(bytes[2]) << 8 | bytes[3];
    uuid.data2 = static_cast<std::uint16_t>(bytes[4] << 8 | bytes[5]);
    uuid.data3 = static_cast<std::uint16_t>(bytes[6] << 8 | bytes[7]);
    std::memcpy(uuid.data4, bytes + 8, sizeof uuid.data4);
    return uuid;
}

void toBytes(const Uuid& uuid, uuid_t bytes) {
    for (int i = 0; i < 4; ++i)
        bytes[i] = static_cast<unsigned char>(uuid.data1 >> (24 - 8 * i));
    for (int i = 0; i < 2; ++i) {
        bytes[4 + i] = static_cast<unsigned char>(uuid.data2 >> (8 - 8 * i));
        bytes[6 + i] = static_cast<unsigned char>(uuid.data3 >> (8 - 8 * i));
    }
    std::memcpy(bytes + 8, uuid.data4, sizeof uuid.data4);
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
    uuid_t bytes;
    uuid_generate_time(bytes);
    uuid = fromBytes(bytes);
    return 0;
}

bool UuidCalls::isNil(const Uuid& uuid, int& status) {
    uuid_t bytes;
    toBytes(uuid, bytes);
    status = 0;
    return uuid_is_null(bytes) != 0;
}

int UuidCalls::toText(const Uuid& uuid, char*& text) {
    text = new (std::nothrow) char[UUID_STR_LEN];
    if (text == nullptr)
        return kOutOfMemory;
    uuid_t bytes;
    toBytes(uuid, bytes);
    uuid_unparse_lower(bytes, text);
    return 0;
}

void UuidCalls::freeText(char*& text) {
    delete[] text;
    text = nullptr;
}

} // namespace platform
