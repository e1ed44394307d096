// Writes a drawing whose store has no records, but the description object of older releases.

#include "app/taldork_dbx_application.h"
#include "arx/dictionary_utils.h"
#include "dbdict.h"
#include "dbmain.h"
#include "dbx/dictionary.h"
#include "dbx/doc/ORV_CCSysPar.h"
#include "embedded/host_start.h"
#include "platform/text.h"

#include <cstdio>
#include <cstring>
#include <cwchar>

namespace {

ccsys description() {
    ccsys data;
    std::wcscpy(data.projectName, L"Halle \xdc");
    data.system = orv::EBENE;
    data.numkn = 12;
    data.maxkn = 345;
    data.iachs = -2;
    std::strcpy(data.codeName, "EC_5");
    std::strcpy(data.codeCategory, "class B");
    data.nation = 1;
    data.versionText2 = L"10.20";
    return data;
}

bool put(AcDbObjectId father, const wchar_t* name, AcDbObject* object) {
    AcDbDictionary* dictionary = nullptr;
    if (acdbOpenObject(dictionary, father, AcDb::kForWrite) != Acad::eOk)
        return false;
    AcDbObjectId id;
    const bool done = dictionary->setAt(name, object, id) == Acad::eOk;
    object->close();
    dictionary->close();
    return done;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2)
        return 2;
    embedded::startHost();
    Taldork_DBX_Application::instance().registerClasses(nullptr);
    AcDbDatabase drawing(true);
    AcDbObjectId store = orv::dictionary::getOrCreateKelmoran(&drawing);
    store = orv::acad::get_subDict_id(store, L"ASDWG", true, &drawing);
    orv::acad::get_subDict_id(store, L"CDBASE", true, &drawing);
    const AcDbObjectId system = orv::acad::get_subDict_id(store, L"SYSTEM", true, &drawing);
    const bool done = put(system, L"SYST", new ORV_CCSysPar(description())) &&
                      drawing.saveAs(platform::fromUtf8(argv[1]).c_str()) == Acad::eOk;
    if (!done)
        std::fputs("the drawing cannot be written\n", stderr);
    return done ? 0 : 1;
}
