#include "cli/arx/store.h"

#include "arx/dictionary_utils.h"
#include "cli/common/failure.h"
#include "cli/common/record_key.h"
#include "dbdict.h"
#include "platform/text.h"

#include <cwchar>
#include <memory>

namespace taldork::cli {

using namespace orv::cdb;

Store::Store(const Drawing& drawing, const std::string& name)
    : m_database(drawing.database()), m_name(name), m_cdb(&drawing.database()) {
    const cd_error_t status = m_cdb.open(platform::fromUtf8(name), kSharedLocking);
    if (status == CD_ERR_NOTFOUND)
        throw Failure(drawing.path(),
                      "has no record store '" + name + "' ('taldork store create' makes one)");
    if (status != CD_ERR_NONE)
        throw Failure(drawing.path(), "the record store '" + name + "' cannot be opened");
}

std::set<int> Store::groups() const { return groupsOf(m_cdb, m_database); }

std::set<int> Store::keys(int kwh) const {
    std::set<int> keys;
    m_cdb.getKeysForKwh(kwh, keys);
    return keys;
}

std::set<int> groupsOf(const NodCdb& cdb, AcDbDatabase& database) {
    std::set<int> groups;
    AcDbObjectId storeId = cdb._dbId();
    const AcDbObjectId baseId = orv::acad::get_subDict_id(storeId, L"CDBASE", false, &database);
    AcDbDictionary* base = nullptr;
    if (acdbOpenObject(base, baseId, AcDb::kForRead) != Acad::eOk)
        return groups;
    const std::unique_ptr<AcDbDictionaryIterator> entry(base->newIterator());
    // A name is taken for a number in the way in which the store itself reads its keys back.
    for (; !entry->done(); entry->next())
        groups.insert(static_cast<int>(std::wcstol(entry->name(), nullptr, 10)));
    base->close();
    return groups;
}

std::vector<std::optional<std::size_t>> recordSizes(const ICdb& cdb, int kwh, int kwl) {
    std::vector<std::optional<std::size_t>> sizes;
    for (CdbReadWriteMode mode = kFirstRecord;; mode = kNextRecord) {
        std::size_t size = 0;
        const cd_error_t status = cdb.read(kwh, kwl, nullptr, size, mode);
        if (status == CD_ERR_NOTFOUND)
            return sizes;
        if (status == CD_ERR_FAILED)
            sizes.emplace_back();
        else
            sizes.emplace_back(status == CD_ERR_EMPTY ? 0 : size);
    }
}

Bytes readRecord(const ICdb& cdb, const std::string& path, int kwh, int kwl, int position) {
    const std::string key = RecordKey{kwh, kwl}.text();
    if (!cdb.exists(kwh, kwl))
        throw Failure(path, "there is no key " + key);
    std::size_t size = 0;
    cd_error_t status = cdb.read(kwh, kwl, nullptr, size, kFirstRecord);
    for (int at = 0; at < position && status != CD_ERR_NOTFOUND; ++at) {
        size = 0;
        status = cdb.read(kwh, kwl, nullptr, size, kNextRecord);
    }
    if (status == CD_ERR_NOTFOUND)
        throw Failure(path, key + " has no record at position " + std::to_string(position));
    if (status == CD_ERR_EMPTY)
        return {};
    if (status == CD_ERR_TRUNCATED) {
        Bytes bytes(size);
        status = cdb.read(kwh, kwl, bytes.data(), size, kSameRecord);
        if (status == CD_ERR_NONE && size == bytes.size())
            return bytes;
    }
    throw Failure(path, "the record " + key + " at position " + std::to_string(position) +
                            " cannot be read: " + statusText(status));
}

const char* statusText(cd_error_t status) {
    switch (status) {
    case CD_ERR_NONE:
        return "done";
    case CD_ERR_TRUNCATED:
        return "only its beginning was read";
    case CD_ERR_EMPTY:
        return "it holds no bytes";
    case CD_ERR_NOTFOUND:
        return "it is not there";
    case CD_ERR_REMOVE:
        return "its dictionary does not give it up";
    case CD_ERR_FAILED:
        break;
    }
    return "the store cannot do it";
}

} // namespace taldork::cli
