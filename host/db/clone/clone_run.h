#pragma once

#include "db/clone/clone_filers.h"
#include "db/clone/pair_index.h"
#include "dbidar.h"
#include "dbidmap.h"
#include "dbmain.h"

#include <deque>
#include <string>
#include <unordered_set>
#include <vector>

namespace embedded {

class DatabaseCore;
struct DatabaseTag;

// Where a clone is to stand.
struct ClonePlace {
    AcDbObjectId owner;
    // What stands there already and is taken, or filled anew, instead of a clone.
    AcDbObjectId existing;
    bool fillExisting = false;
    // Under which a dictionary or a table takes the clone.
    std::wstring name;
};

// One cloning: its pairs, what is still to be cloned, and how all of it is taken back. Between the cloning of
// an object and that of what it leads to lies a queue, so that no chain of objects is too long.
class CloneRun {
public:
    explicit CloneRun(AcDbIdMapping& mapping) : m_mapping(mapping) {}

    // The pairs in their order; an entry with a null key has been taken out.
    std::vector<AcDbIdPair> pairs;
    // Null if there is none.
    AcDbIdPair* find(const AcDbObjectId& key);
    const AcDbIdPair* find(const AcDbObjectId& key) const { return const_cast<CloneRun*>(this)->find(key); }
    // False for a null key, and for one that is there.
    bool enter(const AcDbIdPair& pair);
    bool takeOut(const AcDbObjectId& key);

    AcDbDatabase* destination = nullptr;
    AcDbDatabase* original = nullptr;
    AcDb::DeepCloneType context = AcDb::kDcCopy;
    AcDb::DuplicateRecordCloning duplicates = AcDb::kDrcNotApplicable;

    bool active() const { return m_active; }
    // Into another drawing, along hard references, rather than inside one, along ownership.
    bool intoOther() const {
        return context == AcDb::kDcWblock || context == AcDb::kDcWblkObjects || context == AcDb::kDcInsert;
    }

    // Begins the cloning, or goes on with one that waits for its translation. eOk; eInvalidContext for
    // another kind of cloning than the one that waits, and while an undo or redo runs in the target.
    Acad::ErrorStatus begin(AcDbDatabase& to, AcDbDatabase& from, AcDb::DeepCloneType kind,
                            AcDb::DuplicateRecordCloning drc);
    // Clones what was asked for, then what it leads to. `owner` is open for write.
    Acad::ErrorStatus clonePrimaries(const AcDbObjectIdArray& ids, AcDbObject& owner);
    // Translates the clones' ids, and ends the cloning.
    Acad::ErrorStatus finish();
    // Takes everything back that was done since begin, and tells so. Where the target has gone there is
    // nothing to take back. Nothing leaves this call.
    void abort();

    // The host's own way to clone an object. As AcDbObject::deepClone and wblockClone say.
    Acad::ErrorStatus cloneObject(const AcDbObject& source, AcDbObject* owner, AcDbObject*& clone,
                                  bool isPrimary);

private:
    struct Pending {
        AcDbObjectId source;
        AcDbObjectId owner; // null: where the original's place in the target is
    };

    Acad::ErrorStatus follow();
    Acad::ErrorStatus clonePending(const Pending& pending);

    Acad::ErrorStatus placeOf(const AcDbObject& source, AcDbObject* owner, bool isPrimary, ClonePlace& place);
    Acad::ErrorStatus bringOwner(const AcDbObject& source, AcDbObjectId& owner);
    Acad::ErrorStatus placeRecord(const AcDbObject& source, AcDbObjectId tableId, ClonePlace& place);
    void placeEntry(const AcDbObject& source, AcDbObjectId dictionaryId, bool isPrimary, ClonePlace& place);
    AcDbObjectId rootFor(const AcDbObjectId& id) const;
    std::wstring mangled(const std::wstring& name, unsigned number) const;

    Acad::ErrorStatus attach(AcDbObject* made, const AcDbObject& source, const ClonePlace& place);
    Acad::ErrorStatus fill(const AcDbObject& source, const ClonePlace& place,
                           const std::vector<std::uint8_t>& bytes);
    Acad::ErrorStatus copyTo(const AcDbObject& source, const ClonePlace& place, bool isPrimary,
                             FilingRoom& room, AcDbObject*& clone);
    Acad::ErrorStatus fillFrom(const AcDbObject& source, const ClonePlace& place, bool isPrimary,
                               FilingRoom& room);
    void queueReferences(const AcDbObject& source, const AcDbObjectId& clone,
                         const std::vector<FiledReference>& references);
    void queueEntries(const AcDbObject& source, const AcDbObjectId& clone);

    Acad::ErrorStatus translateClone(const AcDbIdPair& pair);
    Acad::ErrorStatus translateFields(AcDbObject& clone, const FilingRoom& filed, const Translate& translate);
    // What became of an object, also in the place of a pair without a value that somebody has entered.
    void settle(const AcDbIdPair& pair);
    AcDbObjectId translateId(const AcDbObjectId& id, Strength strength, const AcDbObjectId& clone) const;
    void takeBack();
    void stop();

    AcDbIdMapping& m_mapping;
    PairIndex m_index;
    std::deque<Pending> m_pending;
    std::unordered_set<const AcDbStub*> m_bringing; // owners that are just being cloned for what they own
    std::vector<AcDbStub*> m_made;
    // Room for what the next object files.
    FilingRoom m_room;
    std::size_t m_mark = 0;
    bool m_active = false;
    bool m_recordingBefore = false;
    // Say whether the two databases are still there; the pointers would not.
    DatabaseTag* m_destinationTag = nullptr;
    DatabaseTag* m_originalTag = nullptr;
};

} // namespace embedded
