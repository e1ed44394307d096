#pragma once

#include "dbmain.h"

#include <string>
#include <vector>

// What a node files: a text, and ids of each strength.
struct NodeFields {
    std::wstring text;
    std::vector<AcDbObjectId> softPointers, hardPointers, softOwned, hardOwned;

    Acad::ErrorStatus out(AcDbDwgFiler* filer) const;
    Acad::ErrorStatus in(AcDbDwgFiler* filer);
};

// What a test makes nodes of a certain text do.
struct NodeFaults {
    std::wstring text; // whose nodes are meant; empty for none
    Acad::ErrorStatus write = Acad::eOk;
    Acad::ErrorStatus read = Acad::eOk;
    Acad::ErrorStatus deepClone = Acad::eOk;
    Acad::ErrorStatus wblockClone = Acad::eOk;
    bool throwsOnWrite = false;
    bool throwsOnClone = false;
    Acad::ErrorStatus thrownOnRead = Acad::eOk;
    Acad::ErrorStatus thrownOnTransform = Acad::eOk;
};
NodeFaults& nodeFaults();

// A plain object that leads to others.
class CloneNode : public AcDbObject {
public:
    ACRX_DECLARE_MEMBERS(CloneNode);
    NodeFields fields;
    // Of what it was told as a persistent reactor.
    static std::vector<std::wstring>& heard();

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;
    void modified(const AcDbObject* object) override;
    void erased(const AcDbObject* object, Adesk::Boolean erasing) override;
    void copied(const AcDbObject* object, const AcDbObject* newObject) override;

protected:
    Acad::ErrorStatus subDeepClone(AcDbObject* owner, AcDbObject*& clone, AcDbIdMapping& idMap,
                                   Adesk::Boolean isPrimary) const override;
    Acad::ErrorStatus subWblockClone(AcRxObject* owner, AcDbObject*& clone, AcDbIdMapping& idMap,
                                     Adesk::Boolean isPrimary) const override;
};

// The same as an entity, with a place.
class CloneEntity : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(CloneEntity);
    NodeFields fields;
    AcGePoint3d place;

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

protected:
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& xform) override;
    Acad::ErrorStatus subDeepClone(AcDbObject* owner, AcDbObject*& clone, AcDbIdMapping& idMap,
                                   Adesk::Boolean isPrimary) const override;
    Acad::ErrorStatus subWblockClone(AcRxObject* owner, AcDbObject*& clone, AcDbIdMapping& idMap,
                                     Adesk::Boolean isPrimary) const override;
};

// Has no maker.
class UnmadeNode : public AcDbObject {
public:
    ACRX_DECLARE_MEMBERS(UnmadeNode);
};

void registerCloneNodes();
void unregisterCloneNodes();
