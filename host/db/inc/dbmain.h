#pragma once

#include "AdAChar.h"
#include "acdb.h"
#include "adsdef.h"
#include "dbextents.h"
#include "dbfiler.h"
#include "dbgrip.h"
#include "dbid.h"
#include "dbidar.h"
#include "dbintar.h"
#include "dbptrar.h"
#include "drawable.h"
#include "gepnt3d.h"
#include "gept3dar.h"
#include "gevec3d.h"
#include "platform/guid.h"
#include "reactors/database_reactor.h"
#include "reactors/object_reactor.h"
#include "rxboiler.h"
#include "rxobject.h"

#include <vector>

class AcDbAuditInfo;
class AcDbIdMapping;
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
class AcGePlane;
class AcString;

namespace embedded {
class DatabaseCore;
struct ObjectAccess;
struct ObjectExtras;
} // namespace embedded

// What a database keeps. An object lives on the heap, belongs to its database once it has an id, and is used
// between an open and a close. What an operation needs to be open for is said as "needs read" or "needs
// write"; using it otherwise is a programming error and ends in acrx_abort.
class AcDbObject : public AcGiDrawable {
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

    // The same for group codes. Extended data are not filed there; `allXdata` and `regAppTable` are looked at
    // by nobody.
    Acad::ErrorStatus dxfIn(AcDbDxfFiler* filer);
    Acad::ErrorStatus dxfOut(AcDbDxfFiler* filer, Adesk::Boolean allXdata = true,
                             unsigned char* regAppTable = nullptr) const;
    // The base files handle, reactors, extension dictionary and owner to a file. Reading it takes reactors
    // and owner, as far as they are found, for an object that is in no database; what is in one keeps its
    // own.
    virtual Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer);
    virtual Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const;

    // The system's number of the class. eNotImplementedYet where a class has none.
    Acad::ErrorStatus getClassID(CLSID* classId) const;
    // Looks for what is wrong and mends it; eOk where a class has nothing to look for.
    virtual Acad::ErrorStatus audit(AcDbAuditInfo* auditInfo);

    // A copy in no database, for the caller to delete; what the object owns stays its own. Null if its class
    // makes none or its fields cannot be filed.
    AcRxObject* clone() const override;
    // Needs write. Takes over the other's fields, but keeps its own id, owner and extension dictionary. eOk;
    // eNotThatKindOfClass for an object of another class; the status of the fields, with this object as it
    // was.
    Acad::ErrorStatus copyFrom(const AcRxObject* other) override;
    // Called while objects are cloned inside a drawing (deepClone, along ownership) or into another one
    // (wblockClone, along hard references): by the database, and by objects for what they own. `clone` is the
    // database's and open for write; null if there is none to be made, since the object has a clone or the
    // target has what stands for it. `owner` may be the database for wblockClone: the clone then stands where
    // the original stood. What a class clones by itself it enters into the mapping. eOk; eNotApplicable: the
    // object is left out, and the cloning goes on; any other status ends the cloning and takes it back. Of
    // the host's own: eInvalidContext outside of a cloning; eWrongDatabase; eInvalidOwnerObject; eOwnerNotSet
    // if what owns the object cannot be cloned; eDuplicateRecordName for a table's record inside one drawing;
    // eNotImplementedYet for an entity whose parts only its file knows; the status of the object's fields.
    Acad::ErrorStatus deepClone(AcDbObject* owner, AcDbObject*& clone, AcDbIdMapping& idMap,
                                Adesk::Boolean isPrimary = true) const;
    Acad::ErrorStatus wblockClone(AcRxObject* owner, AcDbObject*& clone, AcDbIdMapping& idMap,
                                  Adesk::Boolean isPrimary = true) const;

    // Needs write. Makes this object and another one of its database change ids and handles: who refers to
    // the one finds the other from then on. Place and persistent reactors stay with the ids; extended data
    // and extension dictionary only if it is asked for. The other one may be open for write, and then goes on
    // being so under its new id. eOk; eNoDatabase if either is in none; eWrongDatabase; eWasErased or
    // ePermanentlyErased, eWasOpenForRead or eWasOpenForNotify, and the status of loading, of the other one;
    // eNotApplicable for records of tables, for an entity and what is none, and where one is a proxy or of a
    // kind that the host has no code for. It is undone as one change.
    Acad::ErrorStatus swapIdWith(AcDbObjectId otherId, Adesk::Boolean swapXdata = false,
                                 Adesk::Boolean swapExtDict = false);
    // Needs write. Puts an object that is in no database into this one's place: it gets id, handle, owner and
    // reactors, and extended data and extension dictionary as asked; an entity without a layer gets this
    // one's settings. It is open for write then, and to be closed. What this object owned beside is erased.
    // eOk: the history keeps this object, which must not be touched any more; eObjectToBeDeleted, where
    // nothing is recorded: it is the caller's to delete. Nothing has changed after eNullObjectPointer for
    // null, and eIllegalReplacement if this object is in no database, the other one is in one, one is an
    // entity and the other none, or either is a table's record.
    Acad::ErrorStatus handOverTo(AcDbObject* newObject, Adesk::Boolean keepXData = true,
                                 Adesk::Boolean keepExtDict = true);

    // Closes the object and gives the changes of this opening up. eOk; eNoDatabase; eNotApplicable, with the
    // object still open, for one that was made, erased or brought back in this opening, that a transaction
    // holds, or whose old state was not taken down in it.
    Acad::ErrorStatus cancel();

    // Needs read. See AcDbObjectReactor. eOk; eInvalidInput for null; eDuplicateKey if it is there already.
    Acad::ErrorStatus addReactor(AcDbObjectReactor* reactor) const;
    // eKeyNotFound.
    Acad::ErrorStatus removeReactor(AcDbObjectReactor* reactor) const;

    // What happens to the objects that name this one as a persistent reactor; as AcDbObjectReactor says. The
    // object is open for notify.
    virtual void cancelled(const AcDbObject* object);
    virtual void copied(const AcDbObject* object, const AcDbObject* newObject);
    virtual void erased(const AcDbObject* object, Adesk::Boolean erasing = true);
    virtual void goodbye(const AcDbObject* object);
    virtual void openedForModify(const AcDbObject* object);
    virtual void modified(const AcDbObject* object);
    virtual void subObjModified(const AcDbObject* object, const AcDbObject* subObject);
    virtual void modifyUndone(const AcDbObject* object);
    virtual void modifiedXData(const AcDbObject* object);
    virtual void unappended(const AcDbObject* object);
    virtual void reappended(const AcDbObject* object);
    virtual void objectClosed(const AcDbObjectId id);

    Adesk::Boolean isPersistent() const override { return !mId.isNull(); }
    AcDbObjectId id() const override { return mId; }
    // Asked to be drawn anew since it was opened for write.
    bool isModifiedGraphics() const;

protected:
    AcDbObject();
    virtual Acad::ErrorStatus subGetClassID(CLSID* classId) const;
    // Nothing is drawn of an object that is no entity.
    Adesk::UInt32 subSetAttributes(AcGiDrawableTraits* traits) override;
    Adesk::Boolean subWorldDraw(AcGiWorldDraw* worldDraw) override;
    void subViewportDraw(AcGiViewportDraw* viewportDraw) override;
    // Called when an open, a close, an erase or an unerase is about to be done. A status other than eOk
    // refuses it.
    virtual Acad::ErrorStatus subOpen(AcDb::OpenMode mode);
    virtual Acad::ErrorStatus subClose();
    virtual Acad::ErrorStatus subErase(Adesk::Boolean erasing);
    virtual Acad::ErrorStatus subCancel();
    virtual Acad::ErrorStatus subDeepClone(AcDbObject* owner, AcDbObject*& clone, AcDbIdMapping& idMap,
                                           Adesk::Boolean isPrimary = true) const;
    virtual Acad::ErrorStatus subWblockClone(AcRxObject* owner, AcDbObject*& clone, AcDbIdMapping& idMap,
                                             Adesk::Boolean isPrimary = true) const;

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

    // The name of the layer, for the caller to give back with acutDelBuffer. That of layer 0 for an entity
    // that has none yet; null if the layer's record cannot be read.
    ACHAR* layer() const;
    AcDbObjectId layerId() const { return mLayer; }
    // Needs write. By name in the entity's database, or the working one for an entity in none. eInvalidInput
    // for null; eNoDatabase if there is neither; eKeyNotFound if there is no such layer; the statuses of
    // opening the layer table.
    virtual Acad::ErrorStatus setLayer(const ACHAR* layer, Adesk::Boolean doSubents = true);
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

    // Geometry. Each operation calls the one of the same name with "sub" in front, which a class writes for
    // itself; where it has not, nothing changes and the answer is eNotImplementedYet, unless something else
    // is said. What changes the entity needs write, the rest needs read. Points and vectors are the world's.

    Acad::ErrorStatus transformBy(const AcGeMatrix3d& xform);
    // A new entity in no database, for the caller to delete, with the other's settings. Null unless eOk.
    Acad::ErrorStatus getTransformedCopy(const AcGeMatrix3d& xform, AcDbEntity*& copy) const;
    // The box that holds all of the entity. Where a class says nothing, that of what it draws in the world;
    // eInvalidExtents if that is nothing.
    Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const;

    // Appends to the arrays. Moving names grips by their index in that row; a class that says nothing moves
    // as a whole, whichever grip it is.
    Acad::ErrorStatus getGripPoints(AcGePoint3dArray& gripPoints, AcDbIntArray& osnapModes,
                                    AcDbIntArray& geomIds) const;
    Acad::ErrorStatus moveGripPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset);
    // The form with data of the application's own. Moving gets the appData of the grips that are held.
    Acad::ErrorStatus getGripPoints(AcDbGripDataPtrArray& grips, double curViewUnitSize, int gripSize,
                                    const AcGeVector3d& curViewDir, int bitflags) const;
    Acad::ErrorStatus moveGripPointsAt(const AcDbVoidPtrArray& gripAppData, const AcGeVector3d& offset,
                                       int bitflags);
    // The points that a stretch takes along. A class that says nothing takes its grips for both.
    Acad::ErrorStatus getStretchPoints(AcGePoint3dArray& stretchPoints) const;
    Acad::ErrorStatus moveStretchPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset);
    // Appends the points of that kind.
    Acad::ErrorStatus getOsnapPoints(AcDb::OsnapMode osnapMode, Adesk::GsMarker gsSelectionMark,
                                     const AcGePoint3d& pickPoint, const AcGePoint3d& lastPoint,
                                     const AcGeMatrix3d& viewXform, AcGePoint3dArray& snapPoints,
                                     AcDbIntArray& geomIds) const;

    // Appends the simpler entities that it consists of, in no database, for the caller to delete.
    Acad::ErrorStatus explode(AcDbVoidPtrArray& entitySet) const;
    // Appends the points where the two meet, in space or seen along the plane's normal.
    Acad::ErrorStatus intersectWith(const AcDbEntity* other, AcDb::Intersect type, AcGePoint3dArray& points,
                                    Adesk::GsMarker thisGsMarker = 0,
                                    Adesk::GsMarker otherGsMarker = 0) const;
    Acad::ErrorStatus intersectWith(const AcDbEntity* other, AcDb::Intersect type, const AcGePlane& projPlane,
                                    AcGePoint3dArray& points, Adesk::GsMarker thisGsMarker = 0,
                                    Adesk::GsMarker otherGsMarker = 0) const;
    // Prints what the entity is to the console.
    void list() const;

    // From the entity's own coordinates to the world's. The identity where a class says nothing.
    virtual void getEcs(AcGeMatrix3d& ecs) const;
    virtual Adesk::Boolean isPlanar() const { return false; }
    // The plane that the entity lies in, if there is one. eNotApplicable where a class says nothing.
    virtual Acad::ErrorStatus getPlane(AcGePlane& plane, AcDb::Planarity& planarity) const;
    // Whether the drawing file is to keep a picture for readers without the class; false.
    virtual Adesk::Boolean saveImagesByDefault() const { return false; }

    // Asks for the entity to be drawn anew. Needs write.
    void recordGraphicsModified(Adesk::Boolean setModified = true);
    // The same for one that is not written: eNoDatabase for an entity in none.
    Acad::ErrorStatus draw();
    bool bounds(AcDbExtents& extents) const override;

protected:
    AcDbEntity();

    virtual Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& xform);
    // Copies the entity by its filers and transforms the copy.
    virtual Acad::ErrorStatus subGetTransformedCopy(const AcGeMatrix3d& xform, AcDbEntity*& copy) const;
    virtual Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const;
    virtual Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& gripPoints, AcDbIntArray& osnapModes,
                                               AcDbIntArray& geomIds) const;
    virtual Acad::ErrorStatus subMoveGripPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset);
    virtual Acad::ErrorStatus subGetGripPoints(AcDbGripDataPtrArray& grips, double curViewUnitSize,
                                               int gripSize, const AcGeVector3d& curViewDir,
                                               int bitflags) const;
    virtual Acad::ErrorStatus subMoveGripPointsAt(const AcDbVoidPtrArray& gripAppData,
                                                  const AcGeVector3d& offset, int bitflags);
    virtual Acad::ErrorStatus subGetStretchPoints(AcGePoint3dArray& stretchPoints) const;
    virtual Acad::ErrorStatus subMoveStretchPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset);
    virtual Acad::ErrorStatus subGetOsnapPoints(AcDb::OsnapMode osnapMode, Adesk::GsMarker gsSelectionMark,
                                                const AcGePoint3d& pickPoint, const AcGePoint3d& lastPoint,
                                                const AcGeMatrix3d& viewXform, AcGePoint3dArray& snapPoints,
                                                AcDbIntArray& geomIds) const;
    virtual Acad::ErrorStatus subExplode(AcDbVoidPtrArray& entitySet) const;
    virtual Acad::ErrorStatus subIntersectWith(const AcDbEntity* other, AcDb::Intersect type,
                                               AcGePoint3dArray& points, Adesk::GsMarker thisGsMarker,
                                               Adesk::GsMarker otherGsMarker) const;
    virtual Acad::ErrorStatus subIntersectWith(const AcDbEntity* other, AcDb::Intersect type,
                                               const AcGePlane& projPlane, AcGePoint3dArray& points,
                                               Adesk::GsMarker thisGsMarker,
                                               Adesk::GsMarker otherGsMarker) const;
    virtual void subList() const;
    // Hands colour, layer, line type, weight and scale to the traits.
    Adesk::UInt32 subSetAttributes(AcGiDrawableTraits* traits) override;

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

    // Model space's user coordinate system, in world coordinates: origin, and two axes of length 1. The
    // drawing's variables UCSORG, UCSXDIR, UCSYDIR; the world's in a new drawing. A program sets it through
    // embedded/user_coordinate_system.h.
    AcGePoint3d ucsorg() const;
    AcGeVector3d ucsxdir() const;
    AcGeVector3d ucsydir() const;

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

    // Clones objects of this database, with all that they own, and puts the clones below `owner`, which must
    // not be open. References among what was cloned end at the clones, others where they ended. `idMap` gets
    // the pairs; with `deferXlation` it is kept for a further call, and the last one, without it, translates
    // all. eOk; eInvalidInput for no ids or a database that has gone; eNullObjectId; eWrongDatabase; the
    // statuses of opening; those of AcDbObject::deepClone; eInvalidContext for a mapping of another cloning,
    // or while an undo or redo runs. After a failure nothing has been cloned, earlier calls with the mapping
    // included, and the mapping is empty.
    Acad::ErrorStatus deepCloneObjects(const AcDbObjectIdArray& objectIds, const AcDbObjectId& owner,
                                       AcDbIdMapping& idMap, bool deferXlation = false);
    // The same from one database to another, one of which is this: with all that hard references and hard
    // ownership lead to. What is asked for goes below `owner`. What is led to goes where it stood: a record
    // into its table; what hangs below the named object dictionary to the same path, where what stands there
    // already is used. A record whose name the target has is taken from there (kDrcIgnore), filled with the
    // original's content (kDrcReplace), or comes under another name ("$0$NAME", kDrcMangleName; with the
    // file's name in front, kDrcXrefMangleName). References that lead to nothing that was cloned become null.
    // Statuses as above; eInvalidInput inside one database.
    Acad::ErrorStatus wblockCloneObjects(const AcDbObjectIdArray& objectIds, const AcDbObjectId& owner,
                                         AcDbIdMapping& idMap, AcDb::DuplicateRecordCloning drc,
                                         bool deferXlation = false);
    // Takes a cloning back that waits for its translation.
    void abortDeepClone(AcDbIdMapping& idMap);
    // A new drawing, the caller's, with clones of these objects in its model space, and `basePoint` as its
    // origin; of a block's entities; of all of model space and paper space. Null, with the status, if it
    // fails.
    Acad::ErrorStatus wblock(AcDbDatabase*& output, const AcDbObjectIdArray& objectIds,
                             const AcGePoint3d& basePoint);
    Acad::ErrorStatus wblock(AcDbDatabase*& output, AcDbObjectId blockId);
    Acad::ErrorStatus wblock(AcDbDatabase*& output);

    // Brings all of another drawing's model space here: as a new block of that name, with the other drawing's
    // base point as its origin, whose record `blockId` is; or into model space, moved by the matrix. Records
    // whose names are here already are used, as wblockCloneObjects with kDrcIgnore. Without
    // `preserveSourceDatabase` the other drawing may be used up; it is the caller's still. eOk; eInvalidInput
    // for null or this database; eInvalidInput for an empty name, eDuplicateRecordName for one that is taken;
    // the statuses of wblockCloneObjects and of moving. After a failure nothing has been brought.
    Acad::ErrorStatus insert(AcDbObjectId& blockId, const ACHAR* blockName, AcDbDatabase* database,
                             bool preserveSourceDatabase = true);
    Acad::ErrorStatus insert(const AcGeMatrix3d& xform, AcDbDatabase* database,
                             bool preserveSourceDatabase = true);

    // See AcDbDatabaseReactor. eOk; eInvalidInput for null; eDuplicateKey; eKeyNotFound.
    Acad::ErrorStatus addReactor(AcDbDatabaseReactor* reactor) const;
    Acad::ErrorStatus removeReactor(AcDbDatabaseReactor* reactor) const;

    // Switches recording for undo off or on. On at the start. Switching off drops the history. Nothing
    // happens while an undo or redo runs, or a transaction is taken back: that walks the history.
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

// Between an id and the name of the same object in the plain interface (adsdef.h). eOk; eInvalidAdsName, with
// a null id, for a name that names no object of a database, gone ones included; eNullObjectId, with a name of
// zeros, for the null id. Neither looks whether the object is erased.
Acad::ErrorStatus acdbGetObjectId(AcDbObjectId& id, const ads_name name);
Acad::ErrorStatus acdbGetAdsName(ads_name& name, AcDbObjectId id);

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
