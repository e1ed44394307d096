#pragma once

#include "rxiter.h"
#include "rxobject.h"

// Walks a dictionary of run-time objects. Removing the present entry while it walks is allowed.
class AcRxDictionaryIterator : public AcRxIterator {
public:
    ACRX_DECLARE_MEMBERS(AcRxDictionaryIterator);

    // The present entry's name, alive as long as the entry; null when done.
    virtual const ACHAR* key() const = 0;
    virtual Adesk::UInt32 id() const = 0;
};

// Run-time objects by name and by number. Numbers begin with 1, are given in the order in which names come,
// and are never given again.
class AcRxDictionary : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcRxDictionary);

    // Null if there is none.
    virtual AcRxObject* at(const ACHAR* key) const = 0;
    virtual AcRxObject* at(Adesk::UInt32 id) const = 0;

    // Puts an object under a name and tells its number. What stood there before comes back and is the
    // caller's; null if nothing did or if the dictionary deletes its objects.
    virtual AcRxObject* atPut(const ACHAR* key, AcRxObject* object, Adesk::UInt32& id) = 0;
    // The same for a number that is there; null and no change for one that is not.
    virtual AcRxObject* atPut(Adesk::UInt32 id, AcRxObject* object) = 0;
    // False, with no change, if the old name is not there or the new one is taken.
    virtual bool resetKey(const ACHAR* oldKey, const ACHAR* newKey) = 0;
    virtual bool resetKey(Adesk::UInt32 id, const ACHAR* newKey) = 0;

    // Takes an entry out. The object comes back and is the caller's; null if there was none or if the
    // dictionary deletes its objects.
    virtual AcRxObject* remove(const ACHAR* key) = 0;
    virtual AcRxObject* remove(Adesk::UInt32 id) = 0;

    virtual bool has(const ACHAR* key) const = 0;
    virtual bool has(Adesk::UInt32 id) const = 0;
    // 0 if there is no such name.
    virtual Adesk::UInt32 idAt(const ACHAR* key) const = 0;
    // Null if there is no such number.
    virtual const ACHAR* keyAt(Adesk::UInt32 id) const = 0;

    virtual Adesk::UInt32 numEntries() const = 0;
    // Sorted: by name. Collated: in the order of coming. The caller deletes it.
    virtual AcRxDictionaryIterator* newIterator(AcRx::DictIterType type = AcRx::kDictSorted) = 0;

    virtual bool deletesObjects() const = 0;
    virtual bool isCaseSensitive() const = 0;
};

// A dictionary of one's own. The caller deletes it.
AcRxDictionary* acrxNewDictionary(bool caseSensitive = true, bool deletesObjects = false);

// The host's own dictionary, with the entries that rxdefs.h names. Lives as long as the process.
AcRxDictionary* acrxSysRegistry();

#define acrxClassDictionary AcRxDictionary::cast(acrxSysRegistry()->at(ACRX_CLASS_DICTIONARY))
#define acrxServiceDictionary AcRxDictionary::cast(acrxSysRegistry()->at(ACRX_SERVICE_DICTIONARY))
