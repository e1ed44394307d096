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
#include <memory_resource>
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

bool isPassedOver(const AcDbObjectId& id, bool withErased) {
    return !id.isValid() || (!withErased && (id.isErased() || id.isEffectivelyErased()));
}

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
        for (; !entities->done(); entities->step(true, true)) {
            AcDbObjectId id;
            if (entities->getEntityId(id) != Acad::eOk || isPassedOver(id, withErased))
                continue;
            AcDbObject* entity = nullptr;
            es = manager.getObject(entity, id, AcDb::kForRead, false, true);
            if (es == Acad::eOk && (withDerived ? entity->isKindOf(cls) : entity->isA() == cls))
                found.push_back(id);
        }
        return es;
    }
    ORV_CRITICAL_GUARD(Acad::eOk)
}

// The sum goes round: numbers come from drawings and may be any.
int successor(int no) { return static_cast<int>(static_cast<unsigned int>(no) + 1); }

} // namespace

// In step, but not inverse to one another: a number that is given twice leads to the element that had it
// first.
struct NumberingBucket::Impl {
    void enter(const AcDbObjectId& id, int no);

    // Entries never leave, so their memory goes with the table, all at once.
    std::pmr::monotonic_buffer_resource memory;
    std::pmr::map<AcDbObjectId, int> id2no{&memory};
    std::pmr::map<int, AcDbObjectId> no2id{&memory};
};

// As insert. Most entries come in ascending order, which costs no search this way.
template <class Map>
std::pair<typename Map::iterator, bool> enterInto(Map& map, const typename Map::key_type& key,
                                                  const typename Map::mapped_type& value) {
    const std::size_t before = map.size();
    const auto at = map.emplace_hint(map.end(), key, value);
    return {at, map.size() != before};
}

void NumberingBucket::Impl::enter(const AcDbObjectId& id, int no) {
    {
        const auto ok = enterInto(id2no, id, no);
        ORV_ASSERT(ok.second == true);
    }
    {
        const auto ok = enterInto(no2id, no, id);
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

int NumberingBucket::nextFreeNo() {
    return m_impl->id2no.empty() ? 1 : successor(m_impl->id2no.rbegin()->second);
}

boost::optional<AcDbObjectId> NumberingBucket::getIdByNo(int no) {
    const auto found = m_impl->no2id.find(no);
    if (found == m_impl->no2id.end())
        return boost::none;
    return found->second;
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
    const auto known = m_impl->id2no.find(id);
    if (known != m_impl->id2no.end())
        return known->second;
    const int no = nextFreeNo();
    m_impl->enter(id, no);
    return no;
}

} // namespace orv::numbering
