#pragma once

#include "AcString.h"
#include "dbmain.h"

#include <memory>

namespace embedded {
struct SymbolAccess;
class SymbolIndex;
} // namespace embedded

// A named entry of one of the drawing's tables: a layer, a line type, a block.
class AcDbSymbolTableRecord : public AcDbObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbSymbolTableRecord);
    ~AcDbSymbolTableRecord() override;

    // Needs read. eOk. The first gives a buffer of the caller's (acutDelBuffer); the second one points into
    // the record and is good until the name changes.
    Acad::ErrorStatus getName(ACHAR*& name) const;
    Acad::ErrorStatus getName(const ACHAR*& name) const;
    Acad::ErrorStatus getName(AcString& name) const;
    // Needs write. eOk; eInvalidInput for an empty name; eDuplicateRecordName if another record of the table
    // has it.
    virtual Acad::ErrorStatus setName(const ACHAR* name);

    // Comes from another drawing that this one refers to.
    bool isDependent() const;
    bool isResolved() const;
    // Whether a user may give it another name: not if every drawing must have it, nor if it is another
    // drawing's.
    bool isRenamable() const;

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

protected:
    AcDbSymbolTableRecord();
    // eCannotBeErasedByCaller for one that every drawing must have.
    Acad::ErrorStatus subErase(Adesk::Boolean erasing) override;

private:
    friend struct embedded::SymbolAccess;

    struct Fields {
        AcString name;
        AcDbObjectId referenceBlock; // of the drawing that it comes from
        Adesk::UInt16 referenceIndex = 0;
        bool referenced = true; // seen in use when the drawing was last edited
        bool dependent = false;
    };
    Fields m_fields;
};

class AcDbSymbolTable;

// Walks a table's records in the table's order; opens nothing by itself. The caller deletes it; the table
// must outlive it. Stays usable while records are added or erased.
class AcDbSymbolTableIterator : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbSymbolTableIterator);
    AcDbSymbolTableIterator(const AcDbSymbolTable& table, bool atBeginning, bool skipDeleted);

    void start(bool atBeginning = true, bool skipDeleted = true);
    bool done() const;
    void step(bool forward = true, bool skipDeleted = true);
    // eIteratorDone when there is no present record. getRecordId leaves a null id then.
    Acad::ErrorStatus getRecordId(AcDbObjectId& id) const;
    // The present record, opened; close it. Statuses of opening.
    Acad::ErrorStatus getRecord(AcDbSymbolTableRecord*& record, AcDb::OpenMode mode = AcDb::kForRead,
                                bool openErased = false) const;
    // Goes to that record. eRecordNotInTable.
    Acad::ErrorStatus seek(AcDbObjectId id);
    Acad::ErrorStatus seek(const AcDbSymbolTableRecord* record);

private:
    const AcDbSymbolTable& m_table;
    std::ptrdiff_t m_at = 0;
};

// The drawing's records of one kind by name; it owns them. Names keep their letters and are compared without
// regard to case. Drawings may hold several records of one name ("*Paper_Space"); the first one is found by
// it.
class AcDbSymbolTable : public AcDbObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbSymbolTable);
    ~AcDbSymbolTable() override;

    // Needs read. eOk; eKeyNotFound, with null, if there is none or it is erased and erased ones aren't asked
    // for; for the forms that open also the statuses of opening. Close what was opened.
    Acad::ErrorStatus getAt(const ACHAR* name, AcDbObjectId& id, bool getErasedRecord = false) const;
    Acad::ErrorStatus getAt(const ACHAR* name, AcDbSymbolTableRecord*& record, AcDb::OpenMode mode,
                            bool openErasedRecord = false) const;
    bool has(const ACHAR* name) const;
    bool has(AcDbObjectId id) const;

    // Needs read. The iterator is the caller's.
    Acad::ErrorStatus newIterator(AcDbSymbolTableIterator*& iterator, bool atBeginning = true,
                                  bool skipDeleted = true) const;

    // Needs write. Adds a fresh record, which stays open for write, and becomes its owner. eOk; eInvalidInput
    // for null or a record without a name; eNotThatKindOfClass for one of another table; eAlreadyInDb;
    // eDuplicateRecordName; eNoDatabase if the table is in none.
    Acad::ErrorStatus add(AcDbSymbolTableRecord* record);
    virtual Acad::ErrorStatus add(AcDbObjectId& id, AcDbSymbolTableRecord* record);

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

protected:
    AcDbSymbolTable();
    // The class that records of this table have.
    virtual AcRxClass* recordClass() const = 0;
    // Whether records may be added under a name that is there.
    virtual bool allowsSameNames() const { return false; }

private:
    friend struct embedded::SymbolAccess;

    std::unique_ptr<embedded::SymbolIndex> m_index;
};

namespace embedded {

// What every kind of table has in its own types.
template <class Record>
class TypedSymbolIterator : public AcDbSymbolTableIterator {
public:
    using AcDbSymbolTableIterator::AcDbSymbolTableIterator;
    using AcDbSymbolTableIterator::getRecord;

    Acad::ErrorStatus getRecord(Record*& record, AcDb::OpenMode mode = AcDb::kForRead,
                                bool openErased = false) const {
        record = nullptr;
        AcDbObjectId id;
        const Acad::ErrorStatus es = getRecordId(id);
        return es == Acad::eOk ? acdbOpenObject(record, id, mode, openErased) : es;
    }
};

template <class Record, class Iterator>
class TypedSymbolTable : public AcDbSymbolTable {
public:
    using AcDbSymbolTable::getAt;
    using AcDbSymbolTable::newIterator;

    Acad::ErrorStatus getAt(const ACHAR* name, Record*& record, AcDb::OpenMode mode,
                            bool openErasedRecord = false) const {
        record = nullptr;
        AcDbObjectId id;
        const Acad::ErrorStatus es = getAt(name, id, openErasedRecord);
        return es == Acad::eOk ? acdbOpenObject(record, id, mode, openErasedRecord) : es;
    }

    Acad::ErrorStatus newIterator(Iterator*& iterator, bool atBeginning = true,
                                  bool skipDeleted = true) const {
        assertReadEnabled();
        iterator = new Iterator(*this, atBeginning, skipDeleted);
        return Acad::eOk;
    }

protected:
    AcRxClass* recordClass() const override { return Record::desc(); }
};

} // namespace embedded

// The frame of a table and its iterator, which differ from kind to kind in their types alone.
#define EMBEDDED_DECLARE_SYMBOL_TABLE(TABLE, RECORD)                                                         \
    class TABLE##Iterator : public embedded::TypedSymbolIterator<RECORD> {                                   \
    public:                                                                                                  \
        ACRX_DECLARE_MEMBERS(TABLE##Iterator);                                                               \
        using TypedSymbolIterator::TypedSymbolIterator;                                                      \
    };                                                                                                       \
    class TABLE : public embedded::TypedSymbolTable<RECORD, TABLE##Iterator> {                               \
    public:                                                                                                  \
        ACRX_DECLARE_MEMBERS(TABLE);                                                                         \
        TABLE();                                                                                             \
    }
