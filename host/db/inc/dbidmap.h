#pragma once

#include "acdb.h"
#include "dbid.h"
#include "rxboiler.h"
#include "rxobject.h"

#include <memory>

class AcDbDatabase;
namespace embedded {
class CloneRun;
}

// What became of one object while objects are cloned: `key` is the original, `value` what stands for it among
// the clones.
class AcDbIdPair {
public:
    AcDbIdPair() = default;
    AcDbIdPair(const AcDbObjectId& key, const AcDbObjectId& value, bool isCloned, bool isPrimary = false,
               bool isOwnerXlated = true)
        : m_key(key), m_value(value), m_cloned(isCloned), m_primary(isPrimary), m_ownerXlated(isOwnerXlated) {
    }

    AcDbObjectId key() const { return m_key; }
    AcDbObjectId value() const { return m_value; }
    // The value is a clone, whose ids are to be translated; otherwise it was there before.
    bool isCloned() const { return m_cloned; }
    // Asked for by itself, rather than cloned because something leads to it.
    bool isPrimary() const { return m_primary; }
    // The clone's owner is the final one; otherwise it is translated with the other ids.
    bool isOwnerXlated() const { return m_ownerXlated; }

    AcDbIdPair& setKey(const AcDbObjectId& key) { return m_key = key, *this; }
    AcDbIdPair& setValue(const AcDbObjectId& value) { return m_value = value, *this; }
    AcDbIdPair& setIsCloned(bool cloned) { return m_cloned = cloned, *this; }
    AcDbIdPair& setIsPrimary(bool primary) { return m_primary = primary, *this; }
    AcDbIdPair& setIsOwnerXlated(bool xlated) { return m_ownerXlated = xlated, *this; }

private:
    AcDbObjectId m_key;
    AcDbObjectId m_value;
    bool m_cloned = false;
    bool m_primary = false;
    bool m_ownerXlated = true;
};

// The pairs of one cloning. Made empty for each cloning by whoever asks for it, and told to every object that
// is cloned. With its end a cloning that waits for its translation is given up, as by abortDeepClone; if the
// target has gone by then, destDb answers eNoDatabase to those who are told of it, as origDb does for the
// other drawing.
class AcDbIdMapping : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbIdMapping);
    AcDbIdMapping();
    ~AcDbIdMapping() override;

    // Enters a pair. False for a null key, and for one that is there already; that pair stays as it was. One
    // without a value says nothing: if the object is cloned, its clone takes that place.
    virtual bool assign(const AcDbIdPair& idPair);
    // Fills a pair in by its key. False if there is none: the pair is left as it was.
    virtual bool compute(AcDbIdPair& idPair) const;
    // Puts a pair in the place of the one with its key. False if there is none.
    virtual bool change(const AcDbIdPair& idPair);
    // Takes the pair of that key out. False if there is none.
    virtual bool del(const AcDbObjectId& key);

    // Where the clones go. eOk; eNoDatabase while it is not known yet.
    virtual Acad::ErrorStatus destDb(AcDbDatabase*& database) const;
    virtual Acad::ErrorStatus setDestDb(AcDbDatabase* database);
    // Where the originals are. As destDb.
    virtual Acad::ErrorStatus origDb(AcDbDatabase*& database) const;
    // The block of an external reference that is just being inserted: null, since none is.
    virtual AcDbObjectId insertingXrefBlockId() const;
    virtual AcDb::DeepCloneType deepCloneContext() const;
    virtual AcDb::DuplicateRecordCloning duplicateRecordCloning() const;

    embedded::CloneRun& run() const { return *m_run; }

private:
    friend class AcDbIdMappingIter;
    AcDbIdMapping(const AcDbIdMapping&) = delete;
    AcDbIdMapping& operator=(const AcDbIdMapping&) = delete;

    std::unique_ptr<embedded::CloneRun> m_run;
};

// Walks the pairs in the order in which they came. Pairs that are entered meanwhile are met at the end; the
// mapping must outlive the walk.
class AcDbIdMappingIter : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbIdMappingIter);
    explicit AcDbIdMappingIter(const AcDbIdMapping& mapping);

    void start();
    // False, with the pair left as it was, behind the last one.
    bool getMap(AcDbIdPair& idPair) const;
    // True if there is a further pair.
    bool next();
    bool done() const;

private:
    const AcDbIdMapping& m_mapping;
    std::size_t m_at = 0;
};
