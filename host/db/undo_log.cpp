#include "db/undo_log.h"

#include "acestext.h"
#include "db/database_core.h"
#include "db/object_access.h"
#include "db/reactors/notices.h"
#include "dbmain.h"
#include "embedded/console.h"
#include "embedded/guarded.h"
#include "embedded/memory_filer.h"
#include "rxclass.h"

#include <algorithm>

namespace embedded {

namespace {

// A value for the length of a scope, however that ends.
template <class T>
class Held {
public:
    Held(T& place, T value) : m_place(place), m_before(place) { place = value; }
    ~Held() { m_place = m_before; }
    Held(const Held&) = delete;
    Held& operator=(const Held&) = delete;

private:
    T& m_place;
    const T m_before;
};

class MarkedUndoing {
public:
    explicit MarkedUndoing(AcDbStub& stub) : m_stub(stub) { m_stub.set(kUndoing); }
    ~MarkedUndoing() { m_stub.clear(kUndoing); }
    MarkedUndoing(const MarkedUndoing&) = delete;
    MarkedUndoing& operator=(const MarkedUndoing&) = delete;

private:
    AcDbStub& m_stub;
};

std::wstring nameOf(const AcDbObject* object) {
    return object != nullptr ? std::wstring(object->isA()->name()) : std::wstring(L"An object");
}

constexpr const wchar_t* kFailed = L" failed in undo";
constexpr const wchar_t* kNotRecorded = L" cannot be recorded for undo";

void printFailure(const AcDbObject& object, const wchar_t* what, Acad::ErrorStatus es) {
    const ACHAR* status = acadErrorStatusText(es);
    writeToConsole(nameOf(&object) + what + L": " +
                   (status != nullptr ? status : std::to_wstring(es).c_str()) + L"\n");
}

Acad::ErrorStatus together(Acad::ErrorStatus es, const AcDbDwgFiler& filer) {
    return es != Acad::eOk ? es : filer.filerStatus();
}

} // namespace

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
    if (m_active)
        return;
    if (!recording)
        forget();
    m_recording = recording;
    ++m_scope;
}

void UndoLog::forget() {
    if (m_active)
        return;
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

bool UndoLog::recordState(AcDbObject& object) {
    if (!m_recording || m_discard)
        return false;
    Side& side = sink();
    const std::size_t mark = side.records.size();
    side.records.push_back({object.objectId(), side.bytes.size(), Kind::State});
    // Half a state is none.
    try {
        MemoryFiler filer(AcDb::kUndoFiler, side.bytes);
        const Acad::ErrorStatus es = together(object.dwgOutFields(&filer), filer);
        if (es == Acad::eOk)
            return true;
        printFailure(object, kNotRecorded, es);
    } catch (...) {
        printCaught(nameOf(&object) + kNotRecorded);
    }
    side.truncate(mark);
    return false;
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
    const MarkedUndoing marked(second);
    notices::undone(*second.object);
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
    const bool recorded = recordState(object);
    recordErasedBit(stub, erasedBefore);
    ObjectAccess::subErase(object, erased);
    if (!recorded || side.records.size() != mark + 2)
        return;
    std::vector<std::uint8_t> after;
    MemoryFiler filer(AcDb::kUndoFiler, after);
    if (together(object.dwgOutFields(&filer), filer) != Acad::eOk)
        return;
    const auto before = side.bytes.begin() + static_cast<std::ptrdiff_t>(side.records[mark].offset);
    if (std::equal(before, side.bytes.end(), after.begin(), after.end())) {
        side.truncate(mark);
        recordErasedBit(stub, erasedBefore);
    }
}

// The bit stands whatever the object says: whoever watches it hears of that.
void UndoLog::letEraseGuarded(AcDbObject& object, bool erased, bool erasedBefore) {
    try {
        letErase(object, erased, erasedBefore);
    } catch (...) {
        printCaught(nameOf(&object) + kFailed);
    }
}

void UndoLog::applyErasedBit(AcDbStub& stub, bool erased, bool made) {
    const bool erasedBefore = stub.has(kErased);
    erased ? stub.set(kErased) : stub.clear(kErased);
    stub.set(kDirty);
    if (stub.object != nullptr && !made && m_inverse != nullptr && m_recording)
        letEraseGuarded(*stub.object, erased, erasedBefore);
    else
        recordErasedBit(stub, erasedBefore, made);
    if (stub.object != nullptr)
        made ? notices::remade(*stub.object, !erased) : notices::erased(*stub.object, erased);
}

void UndoLog::applyFields(const Record& record, const std::uint8_t* bytes, std::size_t length) {
    AcDbObject& object = *record.stub->object;
    record.stub->set(kDirty);
    MemoryFiler filer(AcDb::kUndoFiler, bytes, length);
    Acad::ErrorStatus es = Acad::eOk;
    try {
        if (record.kind == Kind::State) {
            recordState(object);
            es = together(object.dwgInFields(&filer), filer);
        } else {
            void* classOfRecord = nullptr;
            filer.readAddress(&classOfRecord);
            es = object.applyPartialUndo(&filer, static_cast<AcRxClass*>(classOfRecord));
        }
        if (es != Acad::eOk)
            printFailure(object, kFailed, es);
    } catch (...) {
        printCaught(nameOf(&object) + kFailed);
    }
    // Also of half a state: it is another one than before.
    notices::undone(object);
}

void UndoLog::apply(const Record& record, const std::uint8_t* bytes, std::size_t length) {
    AcDbStub& stub = *record.stub;
    if (stub.object == nullptr && record.kind != Kind::ErasedBit)
        return;
    const MarkedUndoing marked(stub);
    try {
        if (record.kind == Kind::ErasedBit)
            applyErasedBit(stub, (record.offset & ~kMade) != 0, (record.offset & kMade) != 0);
        else if (record.kind == Kind::Exchange)
            applyExchange(stub, bytes, length);
        else
            applyFields(record, bytes, length);
    } catch (...) {
        printCaught(nameOf(stub.object) + kFailed);
    }
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
        try {
            return together(object.dwgInFields(&filer), filer) == Acad::eOk;
        } catch (...) {
            printCaught(nameOf(&object) + kFailed);
            return false;
        }
    }
    return false;
}

void UndoLog::applyDownTo(Side& side, std::size_t mark) {
    const Held<bool> active(m_active, true);
    ++m_scope;
    while (side.records.size() > mark) {
        const Record record = side.records.back();
        // The bytes stay where they are until the record is done: the inverse goes to the other side.
        const bool hasBytes = record.kind != Kind::ErasedBit;
        apply(record, hasBytes ? side.bytes.data() + record.offset : nullptr,
              hasBytes ? side.bytes.size() - record.offset : 0);
        side.truncate(side.records.size() - 1);
    }
    ++m_scope;
}

bool UndoLog::rollBack(std::size_t mark) {
    if (!m_recording || m_active || mark > m_undo.records.size())
        return false;
    const Held<bool> discard(m_discard, true);
    applyDownTo(m_undo, mark);
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
    const Held<Side*> inverse(m_inverse, &to);
    applyDownTo(from, mark);
    from.steps.pop_back();
    return true;
}

bool UndoLog::canUndo() const { return !m_undo.records.empty(); }
bool UndoLog::undo() { return moveStep(m_undo, m_redo); }
bool UndoLog::redo() { return moveStep(m_redo, m_undo); }

} // namespace embedded
