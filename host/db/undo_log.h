#pragma once

#include "acadstrc.h"
#include "db/object_exchange.h"
#include "db/stub.h"

#include <cstdint>
#include <memory>
#include <vector>

class AcDbDwgFiler;
class AcDbObject;

namespace embedded {

class MemoryFiler;

// The history of one database: what each change replaced, in steps that are undone and redone whole.
//
// Four kinds of record: the erased bit of an object (a fresh object counts as erased before), an object's
// whole state before its first write in a scope, a partial record that its class writes and applies itself,
// and an exchange of two objects. Applying a record writes the inverse one to the other side, so undo and
// redo are the same walk. An object that an undo or redo erases or brings back is asked to (subErase), as it
// is by whoever erases it; what it owns has records of its own. A transaction that is taken back asks nobody.
class UndoLog {
public:
    UndoLog();
    ~UndoLog();

    bool recording() const { return m_recording; }
    // Switching off forgets the history. Nothing happens while an undo or redo runs, which walks it.
    void setRecording(bool recording);

    // A new step begins; an empty step is not kept. Objects are recorded anew at their next write.
    void beginStep();
    // As beginStep, without ending the step: a transaction starts, which may be taken back alone.
    std::size_t beginScope();
    // A number that changes with every scope; an object whose state was recorded in it needs no second
    // record.
    std::uint32_t scope() const { return m_scope; }

    // `made`: the object comes into being, rather than back.
    void recordErasedBit(AcDbStub& stub, bool erasedBefore, bool made = false);
    // True if the state was taken down. An object that fails to file it, or lets something out, is named on
    // the console: nothing of it is kept.
    bool recordState(AcDbObject& object);
    void recordExchange(AcDbStub& first, AcDbStub& second, ExchangeKeeps keeps);
    // The stream of a new partial record; null while nothing is recorded.
    AcDbDwgFiler* beginPartial(AcDbObject& object);

    // Takes back everything since `mark`, for good. False if the history doesn't reach back that far, and
    // while an undo or redo runs.
    bool rollBack(std::size_t mark);
    // Gives an object the state back that was last taken down of it. False if there is none, and if the
    // object does not take it.
    bool restoreState(AcDbObject& object);
    // False if there is nothing to undo or redo, and while one of them runs. An object that fails or lets
    // something out while its record is applied is named on the console, and the rest goes on.
    bool undo();
    bool redo();
    bool canUndo() const;
    bool canRedo() const { return !m_redo.steps.empty(); }
    bool active() const { return m_active; }
    // Nothing happens while an undo or redo runs.
    void forget();

private:
    enum class Kind : std::uint32_t { ErasedBit, State, Partial, Exchange };
    static constexpr std::size_t kMade = 2;

    struct Record {
        AcDbStub* stub;
        std::size_t offset; // of its bytes; for ErasedBit the bit itself, and kMade
        Kind kind;
    };

    // Records in the order of the changes, their bytes behind one another, and where each step begins.
    struct Side {
        std::vector<Record> records;
        std::vector<std::uint8_t> bytes;
        std::vector<std::size_t> steps;

        void truncate(std::size_t count);
    };

    Side& sink();
    void applyDownTo(Side& side, std::size_t mark);
    void applyExchange(AcDbStub& first, const std::uint8_t* bytes, std::size_t length);
    void apply(const Record& record, const std::uint8_t* bytes, std::size_t length);
    void applyErasedBit(AcDbStub& stub, bool erased, bool made);
    void applyFields(const Record& record, const std::uint8_t* bytes, std::size_t length);
    void letErase(AcDbObject& object, bool erased, bool erasedBefore);
    void letEraseGuarded(AcDbObject& object, bool erased, bool erasedBefore);
    bool moveStep(Side& from, Side& to);

    bool m_recording = false;
    bool m_active = false;
    bool m_discard = false; // inverse records are of no use: a transaction is taken back
    std::uint32_t m_scope = 1;
    Side m_undo;
    Side m_redo;
    Side* m_inverse = nullptr;
    std::unique_ptr<MemoryFiler> m_partial;
};

} // namespace embedded
