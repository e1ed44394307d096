#include "db/undo_log.h"

#include "db/database_core.h"
#include "db/object_access.h"
#include "db/reactors/notices.h"
#include "dbmain.h"
#include "embedded/console.h"
#include "embedded/memory_filer.h"
#include "platform/text.h"
#include "rxclass.h"

#include <algorithm>
#include <exception>

namespace embedded {

void UndoLog::Side::truncate(std::size_t count) {
    if (count < records.size()) {
        // An erased-bit record has no bytes, so the first one that has tells where they end.
        for (std::size_t i = count; i < records.size(); ++i) {
            if (records[i].kind != Kind::ErasedBit) {
                bytes.resize(records[i].offset);
                break;
            }
        }
        records.resize(count);
    }
    while (!steps.empty() && steps.back() > count)
        steps.pop_back();
}

UndoLog::UndoLog() = default;
UndoLog::~UndoLog() = default;

void UndoLog::setRecording(bool recording) {
    if (!recording)
        forget();
    m_recording = recording;
    ++m_scope;
}

void UndoLog::forget() {
    m_undo = Side();
    m_redo = Side();
    ++m_scope;
}

void UndoLog::beginStep() {
    ++m_scope;
    if (m_undo.steps.empty() || m_undo.steps.back() != m_undo.records.size())
        m_undo.steps.push_back(m_undo.records.size());
}

std::size_t UndoLog::beginScope() {
    ++m_scope;
    return m_undo.records.size();
}

UndoLog::Side& UndoLog::sink() {
    if (m_active)
        return *m_inverse;
    // What is changed now makes what was undone before unreachable.
    if (!m_redo.records.empty() || !m_redo.steps.empty())
        m_redo = Side();
    if (m_undo.steps.empty())
        m_undo.steps.push_back(0);
    return m_undo;
}

void UndoLog::recordErasedBit(AcDbStub& stub, bool erasedBefore, bool made) {
    if (!m_recording || m_discard)
        return;
    sink().records.push_back({&stub, (erasedBefore ? 1 : 0) | (made ? kMade : 0), Kind::ErasedBit});
}

void UndoLog::recordState(AcDbObject& object) {
    if (!m_recording || m_discard)
        return;
    Side& side = sink();
    side.records.push_back({object.objectId(), side.bytes.size(), Kind::State});
    try {
        MemoryFiler filer(AcDb::kUndoFiler, side.bytes);
        object.dwgOutFields(&filer);
    } catch (...) {
        // Half a state is none.
        side.truncate(side.records.size() - 1);
        throw;
    }
}

void UndoLog::recordExchange(AcDbStub& first, AcDbStub& second, ExchangeKeeps keeps) {
    if (!m_recording || m_discard)
        return;
    Side& side = sink();
    side.records.push_back({&first, side.bytes.size(), Kind::Exchange});
    MemoryFiler filer(AcDb::kUndoFiler, side.bytes);
    filer.writeAddress(&second);
    filer.writeBool(keeps.extendedData);
    filer.writeBool(keeps.extensionDictionary);
}

void UndoLog::applyExchange(AcDbStub& first, const std::uint8_t* bytes, std::size_t length) {
    MemoryFiler filer(AcDb::kUndoFiler, bytes, length);
    void* address = nullptr;
    ExchangeKeeps keeps;
    filer.readAddress(&address);
    filer.readBool(&keeps.extendedData);
    filer.readBool(&keeps.extensionDictionary);
    auto& second = *static_cast<AcDbStub*>(address);
    recordExchange(first, second, keeps);
    exchangeObjects(first, second, keeps);
    notices::undone(*first.object);
    second.set(kUndoing);
    notices::undone(*second.object);
    second.clear(kUndoing);
}

AcDbDwgFiler* UndoLog::beginPartial(AcDbObject& object) {
    if (!m_recording || m_discard)
        return nullptr;
    Side& side = sink();
    side.records.push_back({object.objectId(), side.bytes.size(), Kind::Partial});
    m_partial = std::make_unique<MemoryFiler>(AcDb::kUndoFiler, side.bytes);
    return m_partial.get();
}

// An object's subErase may change its fields without a word to the history, since it is told that an undo
// runs: its state from before goes to the inverse side, unless nothing came of it.
void UndoLog::letErase(AcDbObject& object, bool erased, bool erasedBefore) {
    AcDbStub& stub = *static_cast<AcDbStub*>(object.objectId());
    Side& side = *m_inverse;
    const std::size_t mark = side.records.size();
    recordState(object);
    recordErasedBit(stub, erasedBefore);
    ObjectAccess::subErase(object, erased);
    if (side.records.size() != mark + 2)
        return;
    std::vector<std::uint8_t> after;
    MemoryFiler filer(AcDb::kUndoFiler, after);
    object.dwgOutFields(&filer);
    const auto before = side.bytes.begin() + static_cast<std::ptrdiff_t>(side.records[mark].offset);
    if (std::equal(before, side.bytes.end(), after.begin(), after.end())) {
        side.truncate(mark);
        recordErasedBit(stub, erasedBefore);
    }
}

void UndoLog::applyErasedBit(AcDbStub& stub, bool erased, bool made) {
    const bool erasedBefore = stub.has(kErased);
    erased ? stub.set(kErased) : stub.clear(kErased);
    stub.set(kDirty);
    if (stub.object != nullptr && !made && m_inverse != nullptr && m_recording)
        letErase(*stub.object, erased, erasedBefore);
    else
        recordErasedBit(stub, erasedBefore, made);
    if (stub.object != nullptr)
        made ? notices::remade(*stub.object, !erased) : notices::erased(*stub.object, erased);
}

void UndoLog::applyFields(const Record& record, const std::uint8_t* bytes, std::size_t length) {
    AcDbObject& object = *record.stub->object;
    record.stub->set(kDirty);
    MemoryFiler filer(AcDb::kUndoFiler, bytes, length);
    if (record.kind == Kind::State) {
        recordState(object);
        object.dwgInFields(&filer);
    } else {
        void* classOfRecord = nullptr;
        filer.readAddress(&classOfRecord);
        object.applyPartialUndo(&filer, static_cast<AcRxClass*>(classOfRecord));
    }
    notices::undone(object);
}

void UndoLog::apply(const Record& record, const std::uint8_t* bytes, std::size_t length) {
    AcDbStub& stub = *record.stub;
    if (stub.object == nullptr && record.kind != Kind::ErasedBit)
        return;
    stub.set(kUndoing);
    try {
        if (record.kind == Kind::ErasedBit)
            applyErasedBit(stub, (record.offset & ~kMade) != 0, (record.offset & kMade) != 0);
        else if (record.kind == Kind::Exchange)
            applyExchange(stub, bytes, length);
        else
            applyFields(record, bytes, length);
    } catch (const std::exception& failure) {
        writeToConsole(std::wstring(stub.object->isA()->name()) + L" failed in undo: " +
                       platform::fromUtf8(failure.what()) + L"\n");
    }
    stub.clear(kUndoing);
}

bool UndoLog::restoreState(AcDbObject& object) {
    AcDbStub* stub = object.objectId();
    for (std::size_t i = m_undo.records.size(); i-- > 0;) {
        const Record& record = m_undo.records[i];
        if (record.kind != Kind::State || record.stub != stub)
            continue;
        const std::vector<std::uint8_t> bytes(
            m_undo.bytes.begin() + static_cast<std::ptrdiff_t>(record.offset), m_undo.bytes.end());
        MemoryFiler filer(AcDb::kUndoFiler, bytes.data(), bytes.size());
        return object.dwgInFields(&filer) == Acad::eOk;
    }
    return false;
}

void UndoLog::applyDownTo(Side& side, std::size_t mark) {
    m_active = true;
    ++m_scope;
    while (side.records.size() > mark) {
        const Record record = side.records.back();
        // The bytes stay where they are until the record is done: the inverse goes to the other side.
        const bool hasBytes = record.kind != Kind::ErasedBit;
        apply(record, hasBytes ? side.bytes.data() + record.offset : nullptr,
              hasBytes ? side.bytes.size() - record.offset : 0);
        side.truncate(side.records.size() - 1);
    }
    m_active = false;
    ++m_scope;
}

bool UndoLog::rollBack(std::size_t mark) {
    if (!m_recording || m_active || mark > m_undo.records.size())
        return false;
    m_discard = true;
    applyDownTo(m_undo, mark);
    m_discard = false;
    return true;
}

bool UndoLog::moveStep(Side& from, Side& to) {
    if (m_active)
        return false;
    while (!from.steps.empty() && from.steps.back() >= from.records.size())
        from.steps.pop_back();
    if (from.steps.empty())
        return false;
    const std::size_t mark = from.steps.back();
    to.steps.push_back(to.records.size());
    m_inverse = &to;
    applyDownTo(from, mark);
    m_inverse = nullptr;
    from.steps.pop_back();
    return true;
}

bool UndoLog::canUndo() const { return !m_undo.records.empty(); }
bool UndoLog::undo() { return moveStep(m_undo, m_redo); }
bool UndoLog::redo() { return moveStep(m_redo, m_undo); }

} // namespace embedded
