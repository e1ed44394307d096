#include "embedded/object_text.h"

#include "adsdef.h"
#include "dbmain.h"
#include "rxclass.h"
#include "rxdefs.h"
#include "rxdict.h"
#include "rxregsvc.h"

namespace embedded {

namespace {

constexpr wchar_t kSection[] = L"SECTION";
constexpr wchar_t kSectionEnd[] = L"ENDSEC";
constexpr wchar_t kFileEnd[] = L"EOF";
constexpr wchar_t kObjects[] = L"OBJECTS";

// The name of a section, which stands behind its begin. Empty if there is none.
std::wstring passSectionName(TextFiler& filer) {
    resbuf* const value = acutNewRb(AcDb::kDxfInvalid);
    std::wstring name;
    if (filer.readResBuf(value) == Acad::eOk) {
        if (value->restype == AcDb::kDxfSymbolTableName)
            name = value->resval.rstring;
        else
            filer.pushBackItem();
    }
    acutRelRb(value);
    return name;
}

// Goes to the first object: that of the objects' section, or the one that the groups begin with. Its DXF
// name; empty, with a failure that stands, if there is none.
std::wstring passToObject(TextFiler& filer) {
    bool inObjects = true;
    filer.skipToObjectStart();
    while (filer.filerStatus() == Acad::eOk && !filer.atEOF()) {
        std::wstring name = filer.passObjectStart();
        if (name == kSection)
            inObjects = passSectionName(filer) == kObjects;
        else if (name == kSectionEnd || name == kFileEnd)
            inObjects = false;
        else if (inObjects)
            return name;
        filer.skipToObjectStart();
    }
    filer.setError(Acad::eEndOfFile, L"there is no object");
    return {};
}

// The classes of objects with a DXF name: the first one found, and how many there are.
AcRxClass* classWithDxfName(const std::wstring& name, int& count) {
    AcRxClass* found = nullptr;
    count = 0;
    const std::unique_ptr<AcRxDictionaryIterator> it(acrxClassDictionary->newIterator());
    for (; !it->done(); it->next()) {
        AcRxClass* const cls = AcRxClass::cast(it->object());
        if (cls == nullptr || cls->dxfName() == nullptr || name != cls->dxfName() ||
            cls->constructor() == nullptr || !cls->isDerivedFrom(AcDbObject::desc()))
            continue;
        found = cls;
        ++count;
    }
    return found;
}

Acad::ErrorStatus readFields(AcDbObject& object, TextFiler& filer) {
    const Acad::ErrorStatus es = object.dxfIn(&filer);
    if (es != Acad::eOk)
        return es;
    if (filer.filerStatus() == Acad::eOk && filer.skipToObjectStart() && filer.filerStatus() == Acad::eOk)
        return Acad::eSomeInputDataLeftUnread;
    if (filer.filerStatus() == Acad::eOk && filer.atEOF())
        filer.setError(Acad::eEndOfObject, L"the object has no end");
    return filer.filerStatus();
}

Acad::ErrorStatus finish(Acad::ErrorStatus es, const TextFiler& filer, std::wstring* reason) {
    if (reason != nullptr)
        *reason = filer.errorMessage();
    return es;
}

} // namespace

Acad::ErrorStatus writeObjectText(const AcDbObject& object, TextForm form, std::string& bytes) {
    bytes.clear();
    const ACHAR* const name = object.isA()->dxfName();
    if (name == nullptr)
        return Acad::eNotPersistable;
    TextFiler filer(form, bytes, object.database());
    filer.writeString(AcDb::kDxfStart, kSection);
    filer.writeString(AcDb::kDxfSymbolTableName, kObjects);
    filer.writeString(AcDb::kDxfStart, name);
    Acad::ErrorStatus es = object.dxfOut(&filer);
    filer.writeString(AcDb::kDxfStart, kSectionEnd);
    filer.writeString(AcDb::kDxfStart, kFileEnd);
    if (es == Acad::eOk)
        es = filer.filerStatus();
    if (es != Acad::eOk)
        bytes.clear();
    return es;
}

Acad::ErrorStatus readObjectText(AcDbObject& object, std::string_view bytes, AcDbDatabase* database,
                                 std::wstring* reason) {
    TextFiler filer(bytes, database);
    const std::wstring name = passToObject(filer);
    const ACHAR* const own = object.isA()->dxfName();
    if (filer.filerStatus() == Acad::eOk && (own == nullptr || name != own))
        filer.setError(Acad::eNotThatKindOfClass, L"the object is a %ls", name.c_str());
    if (filer.filerStatus() != Acad::eOk)
        return finish(filer.filerStatus(), filer, reason);
    return finish(readFields(object, filer), filer, reason);
}

Acad::ErrorStatus makeObjectFromText(std::unique_ptr<AcDbObject>& object, std::string_view bytes,
                                     AcDbDatabase* database, std::wstring* reason) {
    object.reset();
    TextFiler filer(bytes, database);
    const std::wstring name = passToObject(filer);
    int count = 0;
    AcRxClass* const cls = filer.filerStatus() == Acad::eOk ? classWithDxfName(name, count) : nullptr;
    if (count == 0)
        filer.setError(Acad::eClassNotRegistered, L"no class has the DXF name %ls", name.c_str());
    else if (count > 1)
        filer.setError(Acad::eAmbiguousInput, L"several classes have the DXF name %ls", name.c_str());
    if (filer.filerStatus() != Acad::eOk)
        return finish(filer.filerStatus(), filer, reason);
    std::unique_ptr<AcDbObject> made(AcDbObject::cast(cls->create()));
    if (made == nullptr) {
        filer.setError(Acad::eClassNotRegistered, L"nothing can be made of the DXF name %ls", name.c_str());
        return finish(filer.filerStatus(), filer, reason);
    }
    const Acad::ErrorStatus es = readFields(*made, filer);
    if (es == Acad::eOk)
        object = std::move(made);
    return finish(es, filer, reason);
}

} // namespace embedded
