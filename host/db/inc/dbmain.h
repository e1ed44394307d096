#pragma once

#include "AdAChar.h"
#include "acdb.h"
#include "dbfiler.h"
#include "dbid.h"
#include "rxboiler.h"
#include "rxobject.h"

#include <vector>

class AcDbBlockTable;
class AcDbDatabase;
class AcDbDictionary;
class AcDbDimStyleTable;
class AcDbLayerTable;
class AcDbLinetypeTable;
class AcDbRegAppTable;
class AcDbTextStyleTable;
class AcDbTransactionManager;
class AcDbUCSTable;
class AcDbViewTable;
class AcDbViewportTable;
class AcString;

namespace embedded {
class DatabaseCore;
struct ObjectAccess;
struct ObjectExtras;
} // namespace embedded

// What a database keeps. An object lives on the heap, belongs to its database once it has an id, and is used
// between an open and a close. What an operation needs to be open for is said as "needs read" or "needs
// write"; using it otherwise is a programming error and ends in acrx_abort.
class AcDbObject : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbObject);
    ~AcDbObject() override;

    // Null while the object is in no database.
    AcDbObjectId objectId() const { return mId; }
    AcDbObjectId ownerId() const { return mOwner; }
    // Needs write. eOk.
    virtual Acad::ErrorStatus setOwnerId(AcDbObjectId ownerId);
    void getAcDbHandle(AcDbHandle& handle) const;
    AcDbDatabase* database() const;

    // From read to write. eOk, also when it is open for write already; eHadMultipleReaders if someone else
    // reads it too; eNotOpenForRead if it is not open for read.
    Acad::ErrorStatus upgradeOpen();
    // From write back to read. eNotOpenForWrite if it was not open for write.
    Acad::ErrorStatus downgradeOpen();
    Acad::ErrorStatus upgradeFromNotify(bool& wasWritable);
    Acad::ErrorStatus downgradeToNotify(bool wasWritable);
    // Gives back one open. An object without a database is left alone (eNoDatabase); one that is not open
    // answers eNotOpenForRead. An object that a transaction holds stays open until the transaction ends.
    Acad::ErrorStatus close();

    // Needs write. eOk; eWasErased or eWasNotErased if it is so already; what subErase answers otherwise.
    Acad::ErrorStatus erase(Adesk::Boolean erasing = true);

    bool isErased() const;
    Adesk::Boolean isReadEnabled() const;
    Adesk::Boolean isWriteEnabled() const;
    Adesk::Boolean isNotifyEnabled() const;
    // Written since it was opened.
    Adesk::Boolean isModified() const;
    // Added to its database during the present open.
    Adesk::Boolean isNewObject() const;
    // An undo or redo is putting an old state back.
    Adesk::Boolean isUndoing() const;
    Adesk::Boolean isTransactionResident() const;
    // Stands for an object whose class is not there.
    Adesk::Boolean isAProxy() const;

    // End the process through acrx_abort unless the object is open as said. An object in no database passes.
    // assertWriteEnabled also takes the state down for undo before the first change, unless `autoUndo` is
    // false.
    void assertReadEnabled() const;
    void assertWriteEnabled(Adesk::Boolean autoUndo = true, Adesk::Boolean recordModified = true);
    void assertNotifyEnabled() const;

    // While true, writes to this object are not recorded. Needs write.
    void disableUndoRecording(Adesk::Boolean disable);
    // The stream for a change that the class undoes itself in applyPartialUndo, beginning with the class;
    // null if nothing is recorded now. Needs write. Belongs to the host; every call begins a record.
    AcDbDwgFiler* undoFiler();
    virtual Acad::ErrorStatus applyPartialUndo(AcDbDwgFiler* undoFiler, AcRxClass* classObj);

    // Needs write. eOk, or eAlreadyInDb if there is one.
    Acad::ErrorStatus createExtensionDictionary();
    // Null if there is none.
    AcDbObjectId extensionDictionary() const;
    // Needs write. Gives an empty extension dictionary up: eOk; eKeyNotFound if there is none;
    // eContainerNotEmpty.
    Acad::ErrorStatus releaseExtensionDictionary();

    // Needs write. An id that is there already is not added again.
    void addPersistentReactor(AcDbObjectId reactor);
    Acad::ErrorStatus removePersistentReactor(AcDbObjectId reactor);
    bool hasPersistentReactor(AcDbObjectId reactor) const;

    // The whole of an object to a stream or from it: calls the fields' operation.
    Acad::ErrorStatus dwgIn(AcDbDwgFiler* filer);
    Acad::ErrorStatus dwgOut(AcDbDwgFiler* filer) const;
    // A class calls its base's operation first. The base files owner, reactors, extension dictionary and
    // extended data to every filer but the file's, whose envelope holds them.
    virtual Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer);
    virtual Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const;

protected:
    AcDbObject();
    // Called when an open, a close, an erase or an unerase is about to be done. A status other than eOk
    // refuses it.
    virtual Acad::ErrorStatus subOpen(AcDb::OpenMode mode);
    virtual Acad::ErrorStatus subClose();
    virtual Acad::ErrorStatus subErase(Adesk::Boolean erasing);

private:
    AcDbObject(const AcDbObject&) = delete;
    AcDbObject& operator=(const AcDbObject&) = delete;

    friend struct embedded::ObjectAccess;

    AcDbObjectId mId;
    AcDbObjectId mOwner;
    embedded::ObjectExtras* mExtras = nullptr;
    Adesk::UInt32 mUndoScope = 0;
    Adesk::UInt32 mBits = 0;
};

// What stands in a block: model space, paper space or a named block.
class AcDbEntity : public AcDbObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbEntity);
    ~AcDbEntity() override;

    // The block table record that holds it.
    AcDbObjectId blockId() const { return ownerId(); }

    AcDbObjectId layerId() const { return mLayer; }
    // Needs write. eInvalidInput for the id of something that is no layer of the same database.
    virtual Acad::ErrorStatus setLayer(AcDbObjectId layer, Adesk::Boolean doSubents = true);
    // The line type as one of the table, also where the file says by layer, by block or continuous in two
    // bits.
    AcDbObjectId linetypeId() const;
    virtual Acad::ErrorStatus setLinetype(AcDbObjectId linetype, Adesk::Boolean doSubents = true);
    // Colour index of the drawing: 0 by block, 1 to 255, 256 by layer.
    Adesk::UInt16 colorIndex() const { return mColour; }
    virtual Acad::ErrorStatus setColorIndex(Adesk::UInt16 colour, Adesk::Boolean doSubents = true);
    double linetypeScale() const { return mLinetypeScale; }
    virtual Acad::ErrorStatus setLinetypeScale(double scale, Adesk::Boolean doSubents = true);
    AcDb::Visibility visibility() const { return mInvisible ? AcDb::kInvisible : AcDb::kVisible; }
    virtual Acad::ErrorStatus setVisibility(AcDb::Visibility visibility, Adesk::Boolean doSubents = true);
    AcDb::LineWeight lineWeight() const;
    virtual Acad::ErrorStatus setLineWeight(AcDb::LineWeight weight, Adesk::Boolean doSubents = true);

    // Takes the current settings of a database: its layer, colour, line type and weight. Null: the working
    // one.
    void setDatabaseDefaults(AcDbDatabase* db = nullptr);

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

protected:
    AcDbEntity();

private:
    friend struct embedded::ObjectAccess;

    AcDbObjectId mLayer;
    AcDbObjectId mLinetype;  // null: as the two bits in mStyleBits say
    AcDbObjectId mPlotStyle; // likewise
    double mLinetypeScale = 1.0;
    Adesk::UInt16 mColour = 256;
    Adesk::UInt16 mInvisible = 0;
    Adesk::UInt8 mLineWeightCode = 29; // the drawing file's code: 29 by layer, 30 by block, 31 default
    Adesk::UInt8 mLinetypeBits = 0;    // 0 by layer, 1 by block, 2 continuous, 3 by handle
    Adesk::UInt8 mPlotStyleBits = 0;
};

// One drawing: its objects, its history, its file.
class AcDbDatabase : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbDatabase);

    // With `buildDefaultDrawing` all that a drawing must have; without it nothing, to be filled by
    // readDwgFile.
    explicit AcDbDatabase(bool buildDefaultDrawing = true, bool noDocument = false);
    // Ends all objects. Ids of this database become invalid; who has stores open on it closes them before.
    ~AcDbDatabase() override;

    // Reads a drawing into an empty database. eOk; eFilerError for a file that cannot be read;
    // eDwgNeedsRecovery for one that is damaged; eOldDwgVersion or eInvalidDwgVersion for a version that is
    // not supported; eWasOpenForWrite if the database has objects already. The database stays empty after a
    // failure. `embedded::lastFileError` (embedded/session.h) has the reason as one line.
    Acad::ErrorStatus readDwgFile(const ACHAR* fileName, int shareMode = 0, bool allowCPConversion = false,
                                  const ACHAR* password = nullptr);
    // Writes the drawing beside `fileName` (no backup copy is kept, whatever `bBakAndRename` says) and puts
    // it in its place in one step: afterwards there is either the old or the new file, whole. eOk;
    // eFilerError when the system refuses; the status of an object whose filer failed.
    Acad::ErrorStatus saveAs(const ACHAR* fileName, bool bBakAndRename = true,
                             AcDb::AcDbDwgVersion version = AcDb::kDHL_CURRENT);
    // saveAs under the name that the drawing has. eFileNotFound if it has none.
    Acad::ErrorStatus save();

    // The file of the drawing. eFileNotFound, and null, if it has none; the text lives as long as the
    // database.
    Acad::ErrorStatus getFilename(const ACHAR*& fileName) const;
    // The name under which the drawing was first opened, or null.
    const ACHAR* originalFileName() const;

    AcDbObjectId namedObjectsDictionaryId() const;
    AcDbObjectId blockTableId() const;
    AcDbObjectId layerTableId() const;
    AcDbObjectId textStyleTableId() const;
    AcDbObjectId linetypeTableId() const;
    AcDbObjectId viewTableId() const;
    AcDbObjectId UCSTableId() const;
    AcDbObjectId viewportTableId() const;
    AcDbObjectId regAppTableId() const;
    AcDbObjectId dimStyleTableId() const;
    AcDbObjectId groupDictionaryId() const;
    AcDbObjectId mLineStyleDictionaryId() const;
    AcDbObjectId layoutDictionaryId() const;
    AcDbObjectId plotStyleNameDictionaryId() const;
    AcDbObjectId layerZero() const;
    AcDbObjectId continuousLinetype() const;
    AcDbObjectId byLayerLinetype() const;
    AcDbObjectId byBlockLinetype() const;
    AcDbObjectId clayer() const;

    // The table, opened as asked; close it. Statuses of opening.
    Acad::ErrorStatus getBlockTable(AcDbBlockTable*& table, AcDb::OpenMode mode);
    Acad::ErrorStatus getLayerTable(AcDbLayerTable*& table, AcDb::OpenMode mode);
    Acad::ErrorStatus getNamedObjectsDictionary(AcDbDictionary*& dictionary, AcDb::OpenMode mode);

    // Gives a fresh object an id and leaves it open for write. eOk; eAlreadyInDb.
    Acad::ErrorStatus addAcDbObject(AcDbObject* object);
    Acad::ErrorStatus addAcDbObject(AcDbObjectId& id, AcDbObject* object);
    // The object with that handle. eOk; eNullHandle; eUnknownHandle if there is none and none is to be made.
    Acad::ErrorStatus getAcDbObjectId(AcDbObjectId& id, bool createIfNotFound, const AcDbHandle& handle,
                                      Adesk::UInt32 xRefId = 0);
    // The handle that the next new object gets.
    AcDbHandle handseed() const;
    // eInvalidInput for a handle at or below one that is in use.
    Acad::ErrorStatus setHandseed(const AcDbHandle& handle);

    AcDbTransactionManager* transactionManager() const;

    // Switches recording for undo off or on. On at the start. Switching off drops the history.
    void disableUndoRecording(bool disable);
    bool undoRecording() const;
    // Begins a new step of the history.
    void startUndoRecord();

    // Something has been changed since the drawing was read or saved.
    bool isModified() const;

    embedded::DatabaseCore& core() const { return *m_core; }

private:
    AcDbDatabase(const AcDbDatabase&) = delete;
    AcDbDatabase& operator=(const AcDbDatabase&) = delete;

    embedded::DatabaseCore* m_core;
};

// Plain pointers in a row.
class AcDbVoidPtrArray {
public:
    int length() const { return static_cast<int>(m_pointers.size()); }
    void* at(int index) const { return m_pointers[static_cast<std::size_t>(index)]; }
    bool contains(const void* pointer) const;
    void append(void* pointer) { m_pointers.push_back(pointer); }
    void remove(const void* pointer);

private:
    std::vector<void*> m_pointers;
};

// The databases that are there now, in the order of their making. Belongs to the host.
const AcDbVoidPtrArray* acdbActiveDatabaseArray();

// Opens an object. eOk; eNullObjectId; eInvalidInput if the database of the id has gone; eWasErased for an
// erased object unless `openErased`; ePermanentlyErased for one whose history was dropped; eWasOpenForWrite,
// eWasOpenForRead, eWasOpenForNotify or eAtMaxReaders as the present opens stand in the way; the reader's
// status for an object of a drawing that could not be read. `object` is null in all cases but eOk.
Acad::ErrorStatus acdbOpenAcDbObject(AcDbObject*& object, AcDbObjectId id, AcDb::OpenMode mode,
                                     bool openErased = false);
Acad::ErrorStatus acdbOpenAcDbEntity(AcDbEntity*& entity, AcDbObjectId id, AcDb::OpenMode mode,
                                     bool openErased = false);

inline Acad::ErrorStatus acdbOpenObject(AcDbObject*& object, AcDbObjectId id,
                                        AcDb::OpenMode mode = AcDb::kForRead, bool openErased = false) {
    return acdbOpenAcDbObject(object, id, mode, openErased);
}

// The same for one class; eNotThatKindOfClass for an object of another one.
template <class T>
Acad::ErrorStatus acdbOpenObject(T*& object, AcDbObjectId id, AcDb::OpenMode mode = AcDb::kForRead,
                                 bool openErased = false) {
    object = nullptr;
    AcDbObject* opened = nullptr;
    Acad::ErrorStatus es = acdbOpenAcDbObject(opened, id, mode, openErased);
    if (es != Acad::eOk)
        return es;
    object = T::cast(opened);
    if (object == nullptr) {
        opened->close();
        return Acad::eNotThatKindOfClass;
    }
    return Acad::eOk;
}
