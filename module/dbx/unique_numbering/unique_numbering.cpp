#include "dbx/unique_numbering/unique_numbering.h"

#include "base/assert.h"
#include "base/dbx/inc/orvrxuti_dbx.h"
#include "base/guard.h"
#include "orvcore/transaction_manager.h"

#include "dbapserv.h"
#include "dbmain.h"
#include "dbsymtb.h"

#include <algorithm>
#include <map>
#include <memory>
#include <utility>
#include <vector>

namespace orv::numbering {

namespace {

// Closes at the end of its scope what was opened for the scan.
struct Closing {
    void operator()(AcDbObject* object) const { ORV_NOTE_STATUS(object->close()); }
};
using OpenBlock = std::unique_ptr<AcDbBlockTableRecord, Closing>;

Acad::ErrorStatus openModelSpace(OpenBlock& space) {
    AcDbDatabase* const db = acdbHostApplicationServices()->workingDatabase();
    AcDbBlockTable* table = nullptr;
    Acad::ErrorStatus es = db != nullptr ? db->getBlockTable(table, AcDb::kForRead) : Acad::eNoDatabase;
    ORV_NOTE_STATUS(es);
    if (es != Acad::eOk)
        return es;
    AcDbBlockTableRecord* record = nullptr;
    es = table->getAt(ACDB_MODEL_SPACE, record, AcDb::kForRead);
    ORV_NOTE_STATUS(es);
    space.reset(record);
    const Acad::ErrorStatus closed = table->close();
    ORV_NOTE_STATUS(closed);
    return es != Acad::eOk ? es : closed;
}

// Erased with its owner. That is the space, which is asked once; an entity itself only where a damaged
// drawing lists it here and names another owner.
class GoneWithOwner {
public:
    explicit GoneWithOwner(const AcDbObjectId& space)
        : m_space(space), m_isSpaceGone(space.isEffectivelyErased()) {}
    bool operator()(const AcDbObject& entity) const {
        return (m_isSpaceGone || entity.ownerId() != m_space) && entity.objectId().isEffectivelyErased();
    }

private:
    const AcDbObjectId m_space;
    const bool m_isSpaceGone;
};

// The entities of a class in the working drawing's model space, those of derived classes with `withDerived`.
// One that cannot be opened is left out. The status of the last opening; eOk after an exception, with what
// was found until then.
Acad::ErrorStatus scanModelSpace(std::vector<AcDbObjectId>& found, const AcRxClass* cls, bool withDerived,
                                 bool withErased) {
    try {
        ORV_CDBTransactionManager manager(nullptr, false);
        OpenBlock space;
        Acad::ErrorStatus es = openModelSpace(space);
        if (es != Acad::eOk)
            return es;
        AcDbBlockTableRecordIterator* entities = nullptr;
        es = space->newIterator(entities, true, true);
        ORV_NOTE_STATUS(es);
        if (es != Acad::eOk)
            return es;
        const std::unique_ptr<AcDbBlockTableRecordIterator> owned(entities);
        const GoneWithOwner hasGone(space->objectId());
        for (; !entities->done(); entities->step(true, true)) {
            AcDbObjectId id;
            if (entities->getEntityId(id) != Acad::eOk || !id.isValid() || (!withErased && id.isErased()))
                continue;
            AcDbObject* entity = nullptr;
            es = manager.getObject(entity, id, AcDb::kForRead, false, true);
            if (es != Acad::eOk || (!withErased && hasGone(*entity)))
                continue;
            if (withDerived ? entity->isKindOf(cls) : entity->isA() == cls)
                found.push_back(id);
        }
        return es;
    }
    ORV_CRITICAL_GUARD(Acad::eOk)
}

// A map whose entries mostly come in ascending order, and never leave: those stand in a row, the others in a
// tree. Of both the last one of the row is the greatest.
template <class Key, class Value>
class RisingMap {
public:
    using Entry = std::pair<Key, Value>;

    // The key's value, and whether it was entered now; one that is there stays.
    std::pair<const Value*, bool> insert(const Key& key, const Value& value) {
        if (m_row.empty() || m_row.back().first < key) {
            m_row.emplace_back(key, value);
            return {&m_row.back().second, true};
        }
        if (const Value* const known = inRow(key))
            return {known, false};
        const auto entered = m_rest.emplace(key, value);
        return {&entered.first->second, entered.second};
    }
    // `end` for an unknown key.
    const Value* find(const Key& key) const {
        if (const Value* const known = inRow(key))
            return known;
        const auto found = m_rest.find(key);
        return found != m_rest.end() ? &found->second : end();
    }
    const Value* end() const { return nullptr; }
    bool empty() const { return m_row.empty(); }
    const Value& last() const { return m_row.back().second; }

private:
    const Value* inRow(const Key& key) const {
        const auto found = std::lower_bound(m_row.begin(), m_row.end(), key,
                                            [](const Entry& entry, const Key& k) { return entry.first < k; });
        return found != m_row.end() && found->first == key ? &found->second : nullptr;
    }

    std::vector<Entry> m_row;
    std::map<Key, Value> m_rest;
};

// The sum goes round: numbers come from drawings and may be any.
int successor(int no) { return static_cast<int>(static_cast<unsigned int>(no) + 1); }

} // namespace

// In step, but not inverse to one another: a number that is given twice leads to the element that had it
// first.
struct NumberingBucket::Impl {
    void enter(const AcDbObjectId& id, int no);

    RisingMap<AcDbObjectId, int> id2no;
    RisingMap<int, AcDbObjectId> no2id;
};

void NumberingBucket::Impl::enter(const AcDbObjectId& id, int no) {
    {
        const auto ok = id2no.insert(id, no);
        ORV_ASSERT(ok.second == true);
    }
    {
        const auto ok = no2id.insert(no, id);
        ORV_ASSERT(ok.second == true);
    }
}

NumberingBucket::NumberingBucket() : m_impl(new Impl) {}
NumberingBucket::NumberingBucket(const NumberingBucket& other) = default;
NumberingBucket& NumberingBucket::operator=(const NumberingBucket& other) = default;
NumberingBucket::~NumberingBucket() = default;

std::tr1::shared_ptr<NumberingBucket> NumberingBucket::acquire(AcDbDatabase*, Callback callback) {
    const std::tr1::shared_ptr<NumberingBucket> bucket(new NumberingBucket);
    // A space lists an entity once, and most list them in the order of ids: a set would cost more than the
    // scan.
    std::vector<AcDbObjectId> entities;
    scanModelSpace(entities, AcDbEntity::desc(), true, false);
    if (!std::is_sorted(entities.begin(), entities.end()))
        std::sort(entities.begin(), entities.end());
    entities.erase(std::unique(entities.begin(), entities.end()), entities.end());
    for (const AcDbObjectId& id : entities)
        if (const boost::optional<int> no = callback(id))
            bucket->m_impl->enter(id, *no);
    return bucket;
}

int NumberingBucket::nextFreeNo() { return m_impl->id2no.empty() ? 1 : successor(m_impl->id2no.last()); }

boost::optional<AcDbObjectId> NumberingBucket::getIdByNo(int no) {
    const AcDbObjectId* const found = m_impl->no2id.find(no);
    if (found == m_impl->no2id.end())
        return boost::none;
    return *found;
}

bool NumberingBucket::allocate(const AcDbObjectId& id, int no) {
    const auto find_no = m_impl->id2no.find(id);
    ORV_ASSERT(find_no == m_impl->id2no.end());
    if (find_no != m_impl->id2no.end())
        return false;
    m_impl->enter(id, no);
    return true;
}

boost::optional<int> NumberingBucket::getOrCreateNo(const AcDbObjectId& id) {
    if (const int* const known = m_impl->id2no.find(id))
        return *known;
    const int no = nextFreeNo();
    m_impl->enter(id, no);
    return no;
}

} // namespace orv::numbering
