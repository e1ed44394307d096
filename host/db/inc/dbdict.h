#pragma once

#include "AcString.h"
#include "dbmain.h"
#include "rxiter.h"

namespace embedded {
class NameTable;
}
class AcDbDictionary;

// Walks the entries of a dictionary whose objects are not erased, in the order in which they were put in.
// Stays usable while entries are removed or added. The caller deletes it; the dictionary must outlive it.
class AcDbDictionaryIterator : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbDictionaryIterator);

    // The present entry's name, in the iterator until it moves on.
    virtual const ACHAR* name() const = 0;
    virtual Acad::ErrorStatus getObject(AcDbObject*& object, AcDb::OpenMode mode = AcDb::kForRead) = 0;
    virtual AcDbObjectId objectId() const = 0;
    virtual bool done() const = 0;
    // True if there is a further entry.
    virtual bool next() = 0;
    // Goes to the entry of that object; false if there is none.
    virtual bool setPosition(AcDbObjectId objectId) = 0;
};

// Objects by name; it owns them. Names keep their letters and are compared without regard to case. An entry
// whose object is erased is hidden until the object comes back, or until another one takes the name.
class AcDbDictionary : public AcDbObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbDictionary);
    AcDbDictionary();
    ~AcDbDictionary() override;

    // Needs read. eOk; eKeyNotFound, with a null id, if there is no such entry or its object is erased. An
    // object that is gone for good is still found here, and refused when it is opened.
    virtual Acad::ErrorStatus getAt(const ACHAR* name, AcDbObjectId& id) const;
    Acad::ErrorStatus getAt(const ACHAR* name, AcDbObject*& object, AcDb::OpenMode mode) const;
    template <class T>
    Acad::ErrorStatus getAt(const ACHAR* name, T*& object, AcDb::OpenMode mode) const {
        object = nullptr;
        AcDbObjectId id;
        Acad::ErrorStatus es = getAt(name, id);
        return es == Acad::eOk ? acdbOpenObject(object, id, mode) : es;
    }
    // The name of that object: into a buffer of the caller's to give back with acutDelBuffer. eKeyNotFound.
    Acad::ErrorStatus nameAt(AcDbObjectId id, ACHAR*& name) const;
    Acad::ErrorStatus nameAt(AcDbObjectId id, AcString& name) const;

    bool has(const ACHAR* name) const;
    bool has(AcDbObjectId id) const;
    Adesk::UInt32 numEntries() const;

    // Needs write. Puts an object under a name, adds it to the database if it is in none, and becomes its
    // owner. It stays open as it was, for write when it was fresh. What had the name before is erased. eOk;
    // eInvalidKey for an empty name; eInvalidInput for a null object; eWrongDatabase; eNoDatabase if the
    // dictionary is in none.
    virtual Acad::ErrorStatus setAt(const ACHAR* name, AcDbObject* object, AcDbObjectId& id);

    // Needs write. Takes an entry out; its object is not erased. eOk; eKeyNotFound.
    Acad::ErrorStatus remove(const ACHAR* name);
    Acad::ErrorStatus remove(const ACHAR* name, AcDbObjectId& id);
    Acad::ErrorStatus remove(AcDbObjectId id);

    // Needs write. eKeyNotFound; eDuplicateKey if the new name is taken.
    Acad::ErrorStatus setName(const ACHAR* oldName, const ACHAR* newName);

    AcDbDictionaryIterator* newIterator() const;

    // Whether the entries are hard owned, that is kept and copied with the dictionary. False at the start;
    // the dictionary erases its entries with itself in both cases.
    bool isTreatElementsAsHard() const;
    void setTreatElementsAsHard(bool hard);
    AcDb::DuplicateRecordCloning mergeStyle() const;
    void setMergeStyle(AcDb::DuplicateRecordCloning style);

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;
    Acad::ErrorStatus applyPartialUndo(AcDbDwgFiler* undoFiler, AcRxClass* classObj) override;

protected:
    Acad::ErrorStatus subErase(Adesk::Boolean erasing) override;

private:
    friend struct embedded::ObjectAccess;

    embedded::NameTable* m_names;
    Adesk::UInt8 m_hard = 0;
    Adesk::UInt8 m_cloning = AcDb::kDrcIgnore;
};

// A dictionary that answers a name that it does not have with its default entry.
class AcDbDictionaryWithDefault : public AcDbDictionary {
public:
    ACRX_DECLARE_MEMBERS(AcDbDictionaryWithDefault);

    Acad::ErrorStatus getAt(const ACHAR* name, AcDbObjectId& id) const override;
    using AcDbDictionary::getAt;
    AcDbObjectId defaultId() const { return m_default; }
    // Needs write.
    Acad::ErrorStatus setDefaultId(AcDbObjectId id);

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

private:
    AcDbObjectId m_default;
};
