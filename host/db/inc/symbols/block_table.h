#pragma once

#include "dbents.h"
#include "gepnt3d.h"
#include "symbols/symbol_table.h"

#include <vector>

// The names of the two blocks that every drawing has.
#define ACDB_MODEL_SPACE ACRX_T("*Model_Space")
#define ACDB_PAPER_SPACE ACRX_T("*Paper_Space")

namespace embedded {
class EntityList;
struct BlockAccess;
} // namespace embedded
class AcDbBlockTableRecord;

// Walks a block's entities in the order in which they are drawn. The caller deletes it; the record must
// outlive it. Stays usable while entities are appended or erased.
class AcDbBlockTableRecordIterator : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbBlockTableRecordIterator);
    AcDbBlockTableRecordIterator(const AcDbBlockTableRecord& block, bool atBeginning, bool skipDeleted);

    void start(bool atBeginning = true, bool skipDeleted = true);
    bool done() const;
    void step(bool forward = true, bool skipDeleted = true);
    // eIteratorDone, and a null id, when there is no present entity.
    Acad::ErrorStatus getEntityId(AcDbObjectId& id) const;
    // The present entity, opened; close it. Statuses of opening.
    Acad::ErrorStatus getEntity(AcDbEntity*& entity, AcDb::OpenMode mode = AcDb::kForRead,
                                bool openErased = false) const;
    // eNotInBlock.
    Acad::ErrorStatus seek(AcDbObjectId id);
    Acad::ErrorStatus seek(const AcDbEntity* entity);
    AcDbObjectId blockTableRecord() const;

private:
    const AcDbBlockTableRecord& m_block;
    const embedded::EntityList& m_list;
    std::ptrdiff_t m_at = 0;
};

// A block: model space, a layout's paper space or a definition. Owns its entities, and erases them with
// itself.
class AcDbBlockTableRecord : public AcDbSymbolTableRecord {
public:
    ACRX_DECLARE_MEMBERS(AcDbBlockTableRecord);
    AcDbBlockTableRecord();
    ~AcDbBlockTableRecord() override;

    // Needs write. Adds a fresh entity behind the others, and leaves it open for write. eOk;
    // eNullEntityPointer; eAlreadyInDb; eMustFirstAddBlockToDb if the block is in no database.
    Acad::ErrorStatus appendAcDbEntity(AcDbEntity* entity);
    Acad::ErrorStatus appendAcDbEntity(AcDbObjectId& id, AcDbEntity* entity);
    // Needs read. The iterator is the caller's.
    Acad::ErrorStatus newIterator(AcDbBlockTableRecordIterator*& iterator, bool atBeginning = true,
                                  bool skipDeleted = true) const;

    // The text in a buffer of the caller's (acutDelBuffer), or in the record until it changes.
    Acad::ErrorStatus comments(ACHAR*& text) const;
    Acad::ErrorStatus comments(const ACHAR*& text) const;
    virtual Acad::ErrorStatus setComments(const ACHAR* text);
    // The file of an external reference.
    Acad::ErrorStatus pathName(ACHAR*& path) const;
    Acad::ErrorStatus pathName(const ACHAR*& path) const;
    virtual Acad::ErrorStatus setPathName(const ACHAR* path);

    AcGePoint3d origin() const;
    virtual Acad::ErrorStatus setOrigin(const AcGePoint3d& origin);

    // The entities with which the drawing file frames a block. Statuses of opening.
    Acad::ErrorStatus openBlockBegin(AcDbBlockBegin*& begin, AcDb::OpenMode mode = AcDb::kForRead);
    Acad::ErrorStatus openBlockEnd(AcDbBlockEnd*& end, AcDb::OpenMode mode = AcDb::kForRead);

    bool hasAttributeDefinitions() const;
    bool isAnonymous() const;
    bool isFromExternalReference() const;
    bool isFromOverlayReference() const;
    bool isUnloaded() const;
    virtual Acad::ErrorStatus setIsUnloaded(bool unloaded);

    // Whether it is model space or the paper of a layout.
    bool isLayout() const;
    AcDbObjectId getLayoutId() const;
    virtual Acad::ErrorStatus setLayoutId(AcDbObjectId id);

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

protected:
    Acad::ErrorStatus subErase(Adesk::Boolean erasing) override;

private:
    friend struct embedded::BlockAccess;

    struct Fields {
        bool anonymous = false;
        bool hasAttributeDefinitions = false;
        bool externalReference = false;
        bool overlay = false;
        bool unloaded = false;
        AcGePoint3d origin;
        AcString pathName;
        AcString comments;
        std::vector<Adesk::UInt8> preview;
        AcDbObjectId begin, end;
        // As the file names them; the list has what stands now.
        AcDbObjectId firstEntity, lastEntity;
        std::vector<AcDbObjectId> inserts;
        AcDbObjectId layout;
    };
    Fields m_fields;
    std::unique_ptr<embedded::EntityList> m_entities;
};

class AcDbBlockTableIterator : public embedded::TypedSymbolIterator<AcDbBlockTableRecord> {
public:
    ACRX_DECLARE_MEMBERS(AcDbBlockTableIterator);
    using TypedSymbolIterator::TypedSymbolIterator;
};

class AcDbBlockTable : public embedded::TypedSymbolTable<AcDbBlockTableRecord, AcDbBlockTableIterator> {
public:
    ACRX_DECLARE_MEMBERS(AcDbBlockTable);
    AcDbBlockTable();

    // As the base says. Gives the block its two framing entities. A name of an asterisk and one letter ("*U")
    // gets the first free number behind it, and makes the block an anonymous one.
    using TypedSymbolTable::add;
    Acad::ErrorStatus add(AcDbObjectId& id, AcDbSymbolTableRecord* record) override;

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

private:
    Adesk::UInt32 m_nextAnonymous = 1;
};
