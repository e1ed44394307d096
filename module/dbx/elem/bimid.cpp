#include "dbx/elem/bimid.h"

#include "base/assert.h"
#include "platform/uuid.h"

#include <cstring>
#include <sstream>

namespace orv::bimid {

namespace {

constexpr std::int32_t kRecordId = 999;
constexpr std::size_t kWord = 4;

static_assert(sizeof(GUID) == sizeof(platform::Uuid), "both have the system's layout");

} // namespace

std::string generate() {
    platform::UuidCalls& calls = platform::uuidCalls();
    platform::Uuid uuid = {};
    calls.createSequential(uuid);
    int status = 0;
    std::string id;
    if (calls.isNil(uuid, status))
        return id;
    GUID guid;
    std::memcpy(&guid, &uuid, sizeof guid);
    assign(id, guid);
    return id;
}

void assign(std::string& id, const GUID& guid) {
    platform::UuidCalls& calls = platform::uuidCalls();
    platform::Uuid uuid;
    std::memcpy(&uuid, &guid, sizeof uuid);
    char* text = nullptr;
    std::ostringstream stream;
    if (calls.toText(uuid, text) == 0) {
        stream << "guid:128:" << text;
        calls.freeText(text);
    } else {
        stream << "invalid:failed_to_convert";
    }
    id = stream.str();
}

std::string toString(const std::string& id) { return id; }

Blob toCDB(const std::string& id) {
    const std::size_t w = (id.size() + kWord - 1) / kWord;
    Blob data;
    data.resize(sizeof(int) + w * kWord);
    for (std::size_t i = 0; i < sizeof(int); ++i)
        data.data()[i] = static_cast<unsigned char>(kRecordId >> (8 * i));
    // The first character of a word is its lowest byte, so the words in a row are the characters in a row.
    unsigned char* const words = data.data() + sizeof(int);
    std::memset(words, ' ', w * kWord);
    std::memcpy(words, id.c_str(), std::strlen(id.c_str()));
    return data;
}

std::string fromCDB(const Blob& data) {
    std::string id;
    fromCDB(data, id);
    return id;
}

void fromCDB(const Blob& data, std::string& id) {
    id.clear();
    ORV_ASSERT(data.size() > sizeof(int))(data.size());
    if (data.size() < sizeof(int))
        return;
    const std::size_t sizeWithoutId = data.size() - sizeof(int);
    ORV_ASSERT(sizeWithoutId > 0).debug("GUID record without data");
    const std::size_t w = sizeWithoutId / kWord;
    id.assign(reinterpret_cast<const char*>(data.data()) + sizeof(int), w * kWord);
    id.erase(id.find_last_not_of(' ') + 1); // none but blanks: from the first on
    id.resize(std::strlen(id.c_str()));
}

} // namespace orv::bimid
