#include "dbmain.h"

#include "db/database_core.h"
#include "db/object_access.h"
#include "db/open_close.h"
#include "db/reactors/notices.h"
#include "dbproxy.h"
#include "rxclass.h"
#include "rxdefs.h"

#include <algorithm>

using namespace embedded;

AcDbObject::AcDbObject() = default;

AcDbObject::~AcDbObject() {
    if (mExtras != nullptr && !mExtras->transientReactors.empty())
        notices::goodbye(*this);
    delete mExtras;
}

AcDbDatabase* AcDbObject::database() const { return mId.database(); }

void AcDbObject::getAcDbHandle(AcDbHandle& handle) const { handle = mId.handle(); }

Acad::ErrorStatus AcDbObject::setOwnerId(AcDbObjectId ownerId) {
    assertWriteEnabled();
    mOwner = ownerId;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbObject::upgradeOpen() {
    return mId.isNull() ? Acad::eNoDatabase : upgradeStub(*static_cast<AcDbStub*>(mId));
}

Acad::ErrorStatus AcDbObject::downgradeOpen() {
    return mId.isNull() ? Acad::eNoDatabase : downgradeStub(*static_cast<AcDbStub*>(mId));
}

Acad::ErrorStatus AcDbObject::upgradeFromNotify(bool& wasWritable) {
    if (mId.isNull())
        return Acad::eNoDatabase;
    AcDbStub& stub = *static_cast<AcDbStub*>(mId);
    wasWritable = stub.has(kOpenForWrite);
    if (wasWritable)
        return Acad::eOk;
    if (!stub.has(kOpenForNotify))
        return Acad::eNotOpenForRead;
    if (stub.readers() != 0)
        return Acad::eWasOpenForRead;
    stub.set(kOpenForWrite);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbObject::downgradeToNotify(bool wasWritable) {
    if (mId.isNull())
        return Acad::eNoDatabase;
    AcDbStub& stub = *static_cast<AcDbStub*>(mId);
    if (!stub.has(kOpenForWrite) || !stub.has(kOpenForNotify))
        return Acad::eNotOpenForWrite;
    if (!wasWritable)
        stub.clear(kOpenForWrite);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbObject::close() {
    if (mId.isNull())
        return Acad::eNoDatabase;
    AcDbStub& stub = *static_cast<AcDbStub*>(mId);
    const bool lastOpen = stub.has(kOpenForWrite) || stub.readers() <= 1;
    if (stub.has(kInTransaction) && lastOpen)
        return Acad::eOk;
    return closeStub(stub);
}

Acad::ErrorStatus AcDbObject::erase(Adesk::Boolean erasing) {
    if (mId.isNull())
        return Acad::eNoDatabase;
    assertWriteEnabled(false, false);
    AcDbStub& stub = *static_cast<AcDbStub*>(mId);
    const bool erased = erasing != 0;
    if (stub.has(kErased) == erased)
        return erased ? Acad::eWasErased : Acad::eWasNotErased;
    // The bit stands before subErase runs, so that what an owner erases with itself can look at it.
    erased ? stub.set(kErased) : stub.clear(kErased);
    const auto takeBack = [&] { erased ? stub.clear(kErased) : stub.set(kErased); };
    try {
        const Acad::ErrorStatus es = subErase(erasing);
        if (es != Acad::eOk) {
            takeBack();
            return es;
        }
    } catch (...) {
        takeBack();
        throw;
    }
    // Only now: a refused erase leaves no trace, neither in the history nor on the object.
    assertWriteEnabled(false);
    stub.bits ^= kEraseToggled;
    coreOf(&stub)->undo().recordErasedBit(stub, !erased);
    if (mExtras != nullptr && !mExtras->extensionDictionary.isNull())
        eraseOwned(*static_cast<AcDbStub*>(mExtras->extensionDictionary), erased);
    return Acad::eOk;
}

bool AcDbObject::isErased() const { return mId.isErased(); }

namespace {
bool stubHas(const AcDbObjectId& id, std::uint32_t bits) {
    const AcDbStub* stub = id;
    return stub != nullptr && stub->has(bits);
}
} // namespace

Adesk::Boolean AcDbObject::isReadEnabled() const { return stubHas(mId, kReadersMask | kOpenForWrite); }
Adesk::Boolean AcDbObject::isWriteEnabled() const { return stubHas(mId, kOpenForWrite | kUndoing); }
Adesk::Boolean AcDbObject::isNotifyEnabled() const { return stubHas(mId, kOpenForNotify); }
Adesk::Boolean AcDbObject::isModified() const { return stubHas(mId, kWrittenSinceOpen); }
Adesk::Boolean AcDbObject::isNewObject() const { return stubHas(mId, kNewSinceOpen); }
Adesk::Boolean AcDbObject::isUndoing() const { return stubHas(mId, kUndoing); }
Adesk::Boolean AcDbObject::isTransactionResident() const { return stubHas(mId, kInTransaction); }

Adesk::Boolean AcDbObject::isAProxy() const {
    return isKindOf(AcDbProxyObject::desc()) || isKindOf(AcDbProxyEntity::desc());
}

void AcDbObject::assertReadEnabled() const {
    if (!mId.isNull() && !stubHas(mId, kReadersMask | kOpenForWrite | kOpenForNotify | kUndoing | kLoading))
        acrx_abort(L"%s is used for reading without being open (eNotOpenForRead)", isA()->name());
}

void AcDbObject::assertWriteEnabled(Adesk::Boolean autoUndo, Adesk::Boolean recordModified) {
    if (mId.isNull())
        return;
    AcDbStub& stub = *static_cast<AcDbStub*>(mId);
    if (stub.has(kLoading))
        return;
    if (!stub.has(kOpenForWrite | kUndoing))
        acrx_abort(L"%s is written without being open for it (eNotOpenForWrite)", isA()->name());
    if (recordModified) {
        const bool first = stub.has(kOpenForWrite) && !stub.has(kWrittenSinceOpen | kUndoing);
        stub.set(stub.has(kOpenForWrite) ? kWrittenSinceOpen | kDirty : kDirty);
        stub.tag->core->modified = true;
        if (first)
            notices::openedForModify(*this);
    }
    if (!autoUndo || (mBits & kUndoDisabled) != 0)
        return;
    UndoLog& undo = stub.tag->core->undo();
    if (undo.recording() && !undo.active() && mUndoScope != undo.scope()) {
        const bool recorded = undo.recordState(*this);
        // An object that cannot be filed is not asked again for each of its changes.
        mUndoScope = undo.scope();
        if (recorded)
            stub.set(kStateSinceOpen);
    }
}

void AcDbObject::assertNotifyEnabled() const {
    if (!mId.isNull() && !stubHas(mId, kReadersMask | kOpenForWrite | kOpenForNotify | kUndoing | kLoading))
        acrx_abort(L"%s is told of a change without being open (eNotOpenForNotify)", isA()->name());
}

void AcDbObject::disableUndoRecording(Adesk::Boolean disable) {
    assertWriteEnabled(false, false);
    if (disable)
        mBits |= kUndoDisabled;
    else
        mBits &= ~static_cast<Adesk::UInt32>(kUndoDisabled);
}

AcDbDwgFiler* AcDbObject::undoFiler() {
    if (mId.isNull() || (mBits & kUndoDisabled) != 0)
        return nullptr;
    UndoLog& undo = coreOf(mId)->undo();
    // A state of this scope, or the object's very making in it, takes later changes back with it.
    if (!undo.active() && mUndoScope == undo.scope())
        return nullptr;
    return undo.beginPartial(*this);
}

Acad::ErrorStatus AcDbObject::applyPartialUndo(AcDbDwgFiler*, AcRxClass*) { return Acad::eNotApplicable; }

Acad::ErrorStatus AcDbObject::createExtensionDictionary() {
    assertWriteEnabled();
    if (mId.isNull())
        return Acad::eNoDatabase;
    ObjectExtras& extras = ObjectAccess::makeExtras(*this);
    if (!extras.extensionDictionary.isNull() && !extras.extensionDictionary.isErased())
        return Acad::eAlreadyInDb;
    auto* dictionary = new AcDbDictionary;
    extras.extensionDictionary = coreOf(mId)->add(dictionary);
    ObjectAccess::setOwner(*dictionary, mId);
    notices::appended(*dictionary);
    return dictionary->close();
}

AcDbObjectId AcDbObject::extensionDictionary() const {
    if (mExtras == nullptr || mExtras->extensionDictionary.isErased())
        return AcDbObjectId();
    return mExtras->extensionDictionary;
}

Acad::ErrorStatus AcDbObject::releaseExtensionDictionary() {
    assertWriteEnabled();
    AcDbObjectId id = extensionDictionary();
    if (id.isNull())
        return Acad::eKeyNotFound;
    AcDbDictionary* dictionary = nullptr;
    Acad::ErrorStatus es = acdbOpenObject(dictionary, id, AcDb::kForWrite);
    if (es != Acad::eOk)
        return es;
    if (dictionary->numEntries() != 0) {
        dictionary->close();
        return Acad::eContainerNotEmpty;
    }
    dictionary->erase();
    dictionary->close();
    mExtras->extensionDictionary.setNull();
    return Acad::eOk;
}

void AcDbObject::addPersistentReactor(AcDbObjectId reactor) {
    if (hasPersistentReactor(reactor))
        return;
    assertWriteEnabled();
    ObjectAccess::makeExtras(*this).reactors.push_back(reactor);
}

Acad::ErrorStatus AcDbObject::removePersistentReactor(AcDbObjectId reactor) {
    assertWriteEnabled();
    std::vector<AcDbObjectId> ids = ObjectAccess::reactors(*this);
    auto it = std::find(ids.begin(), ids.end(), reactor);
    if (it == ids.end())
        return Acad::eKeyNotFound;
    ids.erase(it);
    ObjectAccess::setReactors(*this, std::move(ids));
    return Acad::eOk;
}

bool AcDbObject::hasPersistentReactor(AcDbObjectId reactor) const {
    const std::vector<AcDbObjectId> ids = ObjectAccess::reactors(*this);
    return std::find(ids.begin(), ids.end(), reactor) != ids.end();
}

Acad::ErrorStatus AcDbObject::dwgIn(AcDbDwgFiler* filer) { return dwgInFields(filer); }
Acad::ErrorStatus AcDbObject::dwgOut(AcDbDwgFiler* filer) const { return dwgOutFields(filer); }

Acad::ErrorStatus AcDbObject::dwgOutFields(AcDbDwgFiler* filer) const {
    assertReadEnabled();
    if (filer->filerType() == AcDb::kFileFiler)
        return filer->filerStatus();
    filer->writeSoftPointerId(mOwner);
    const std::vector<AcDbObjectId> ids = ObjectAccess::reactors(*this);
    filer->writeUInt32(static_cast<Adesk::UInt32>(ids.size()));
    for (const AcDbObjectId& id : ids)
        filer->writeSoftPointerId(id);
    filer->writeHardOwnershipId(mExtras != nullptr ? mExtras->extensionDictionary : AcDbObjectId());
    const std::size_t count = mExtras != nullptr ? mExtras->extendedData.size() : 0;
    filer->writeUInt32(static_cast<Adesk::UInt32>(count));
    for (std::size_t i = 0; i < count; ++i) {
        const ExtendedData& data = mExtras->extendedData[i];
        filer->writeHardPointerId(data.application);
        filer->writeUInt32(static_cast<Adesk::UInt32>(data.bytes.size()));
        filer->writeBytes(data.bytes.data(), data.bytes.size());
    }
    return filer->filerStatus();
}

namespace {

// The length of a damaged stream may be any: room is made only as far as there are bytes for it.
std::vector<std::uint8_t> readRun(AcDbDwgFiler& filer, Adesk::UInt32 length) {
    constexpr Adesk::UInt32 kStep = 64 * 1024;
    std::vector<std::uint8_t> bytes;
    Adesk::UInt32 rest = length;
    do {
        const Adesk::UInt32 step = std::min(rest, kStep);
        const std::size_t at = bytes.size();
        bytes.resize(at + step);
        filer.readBytes(bytes.data() + at, step);
        rest -= step;
    } while (rest != 0 && filer.filerStatus() == Acad::eOk);
    return bytes;
}

} // namespace

Acad::ErrorStatus AcDbObject::dwgInFields(AcDbDwgFiler* filer) {
    assertWriteEnabled();
    if (filer->filerType() == AcDb::kFileFiler)
        return filer->filerStatus();
    AcDbSoftPointerId owner;
    filer->readSoftPointerId(&owner);
    mOwner = owner;
    Adesk::UInt32 count = 0;
    filer->readUInt32(&count);
    std::vector<AcDbObjectId> ids;
    for (Adesk::UInt32 i = 0; i < count && filer->filerStatus() == Acad::eOk; ++i) {
        AcDbSoftPointerId id;
        filer->readSoftPointerId(&id);
        ids.push_back(id);
    }
    ObjectAccess::setReactors(*this, std::move(ids));
    AcDbHardOwnershipId extension;
    filer->readHardOwnershipId(&extension);
    if (mExtras != nullptr || !extension.isNull())
        ObjectAccess::makeExtras(*this).extensionDictionary = extension;
    filer->readUInt32(&count);
    if (mExtras != nullptr)
        mExtras->extendedData.clear();
    for (Adesk::UInt32 i = 0; i < count && filer->filerStatus() == Acad::eOk; ++i) {
        AcDbHardPointerId application;
        Adesk::UInt32 length = 0;
        filer->readHardPointerId(&application);
        filer->readUInt32(&length);
        ExtendedData data{application, readRun(*filer, length)};
        ObjectAccess::makeExtras(*this).extendedData.push_back(std::move(data));
    }
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbObject::subOpen(AcDb::OpenMode) { return Acad::eOk; }
Acad::ErrorStatus AcDbObject::subClose() { return Acad::eOk; }
Acad::ErrorStatus AcDbObject::subErase(Adesk::Boolean) { return Acad::eOk; }
