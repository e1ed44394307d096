// Puts records into a drawing, saves it, and reads them back: what a program on top of the module does first.
//
//   example_records DRAWING OUT

#include "arx/dictionary_utils.h"
#include "dbapserv.h"
#include "dbmain.h"
#include "dbx/cdb/cdb.h"
#include "dbx/dictionary.h"
#include "platform/text.h"
#include "rxdlinkr.h"

#include <cstdio>
#include <memory>
#include <set>
#include <string>

namespace {

const wchar_t* const kStore = L"ASDWG";

std::unique_ptr<AcDbDatabase> open(const char* file) {
    auto database = std::make_unique<AcDbDatabase>(false);
    if (database->readDwgFile(platform::fromSystem(file).c_str()) != Acad::eOk)
        return nullptr;
    acdbHostApplicationServices()->setWorkingDatabase(database.get());
    return database;
}

// Group 10 is taken: its records tell what a structural system is.
constexpr int kGroup = 30;

// A store is three dictionaries; records, keys and groups come into being when they are written.
void createStore(AcDbDatabase& database) {
    AcDbObjectId id = orv::dictionary::getOrCreateKelmoran(&database);
    id = orv::acad::get_subDict_id(id, kStore, true, &database);
    orv::acad::get_subDict_id(id, L"CDBASE", true, &database);
}

bool writeRecords(AcDbDatabase& database) {
    createStore(database);
    orv::cdb::NodCdb store(&database);
    if (store.open(kStore, orv::cdb::kSharedLocking) != orv::cdb::CD_ERR_NONE)
        return false;
    const std::string header = "header of key 30/1";
    const std::string further = "a further record";
    return store.write(kGroup, 1, header.data(), header.size(), orv::cdb::kFirstRecord) ==
               orv::cdb::CD_ERR_NONE &&
           store.write(kGroup, 1, further.data(), further.size(), orv::cdb::kNextRecord) ==
               orv::cdb::CD_ERR_NONE;
}

bool printRecords(AcDbDatabase& database) {
    orv::cdb::NodCdb store(&database);
    if (store.open(kStore, orv::cdb::kSharedLocking) != orv::cdb::CD_ERR_NONE)
        return false;
    std::set<int> keys;
    store.getKeysForKwh(kGroup, keys);
    for (const int kwl : keys) {
        orv::cdb::CdbReadWriteMode mode = orv::cdb::kFirstRecord;
        for (orv::Blob record = orv::cdb::readBlob(store, kGroup, kwl, mode); !record.is_empty();
             record = orv::cdb::readBlob(store, kGroup, kwl, mode)) {
            std::printf("%d/%d: %.*s\n", kGroup, kwl, static_cast<int>(record.size()),
                        record.cast<const char*>());
            mode = orv::cdb::kNextRecord;
        }
    }
    return true;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: example_records DRAWING OUT\n");
        return 2;
    }
    // Linking gives the code; loading lets the host know the classes of the records.
    if (!acrxDynamicLinker->loadModule(L"taldork191_x64.dbx", false)) {
        std::fprintf(stderr, "example_records: the module cannot be loaded\n");
        return 1;
    }
    std::unique_ptr<AcDbDatabase> database = open(argv[1]);
    if (database == nullptr || !writeRecords(*database) ||
        database->saveAs(platform::fromSystem(argv[2]).c_str()) != Acad::eOk) {
        std::fprintf(stderr, "example_records: %s: records cannot be put into it\n", argv[1]);
        return 1;
    }
    database.reset();
    database = open(argv[2]);
    return database != nullptr && printRecords(*database) ? 0 : 1;
}
