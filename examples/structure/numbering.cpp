#include "structure/numbering.h"

#include "orvcore/transaction_manager.h"
#include "structure/element.h"
#include "structure/working_database.h"

#include "dbmain.h"

#include <algorithm>

namespace structure {

using orv::elem::ElementBase;
using orv::elem::Plugin_General;
using orv::numbering::NumberingBucket;

namespace {

NumberingBatch* s_batch = nullptr;

// The number that stands on an element, 0 for none.
unsigned int storedNumber(const AcDbObjectId& id) {
    ORV_CDBTransactionManager manager(id.database(), false);
    AcDbObject* object = nullptr;
    if (manager.getObject(object, id, AcDb::kForRead, false, false) != Acad::eOk)
        return 0;
    const Element* const element = Element::cast(static_cast<const AcDbObject*>(object));
    const Plugin_General* const general = element != nullptr ? element->general() : nullptr;
    return general != nullptr ? general->getNumber() : 0;
}

// Of the elements of one kind. A copy that has not been told so has none yet: what stands there is its
// original's.
boost::optional<int> numberOn(const AcDbObjectId& id, const AcRxClass* kind) {
    boost::optional<int> number;
    if (id.objectClass() == kind && !CopiedTogether::has(id))
        if (const unsigned int stored = storedNumber(id); stored != 0)
            number = static_cast<int>(stored);
    return number;
}

std::tr1::shared_ptr<NumberingBucket> makeBucket(AcDbDatabase* database, AcRxClass* kind) {
    // The walk is over the drawing that is worked in.
    const WorkingDatabase working(database);
    return NumberingBucket::acquire(database, [kind](const AcDbObjectId& id) { return numberOn(id, kind); });
}

// The bucket goes on from the newest element. Where elements were renumbered that may be taken.
int nextUntaken(NumberingBucket& bucket) {
    int number = std::max(bucket.nextFreeNo(), 1);
    while (bucket.getIdByNo(number))
        ++number;
    return number;
}

} // namespace

Numbering& Numbering::instance() {
    static Numbering numbering;
    return numbering;
}

void Numbering::setNumber(Plugin_General& plugin, unsigned int number) { storeNumber(plugin, number); }

void Numbering::onPostClone(Plugin_General& plugin) {
    storeNumber(plugin, 0);
    giveNumber(plugin);
}

void Numbering::onErase(Plugin_General& plugin, bool erasing) {
    ElementBase* const element = plugin.owner();
    if (erasing || element == nullptr || plugin.getNumber() == 0 ||
        ORV_CDBTransactionManager::getUndoRedoActive())
        return;
    const AcDbObjectId id = element->acdb_id();
    const auto bucket = NumberingBatch::numbers(id.database(), element->acdb_isA());
    const boost::optional<AcDbObjectId> holder = bucket->getIdByNo(static_cast<int>(plugin.getNumber()));
    if (holder && *holder != id)
        giveNumber(plugin);
}

void Numbering::giveNumber(Plugin_General& plugin) {
    ElementBase* const element = plugin.owner();
    const AcDbObjectId id = element != nullptr ? element->acdb_id() : AcDbObjectId();
    if (id.isNull())
        return;
    const auto bucket = NumberingBatch::numbers(id.database(), element->acdb_isA());
    const int number = nextUntaken(*bucket);
    bucket->allocate(id, number);
    storeNumber(plugin, static_cast<unsigned int>(number));
}

NumberingBatch::NumberingBatch() {
    if (s_batch == nullptr)
        s_batch = this;
}

NumberingBatch::~NumberingBatch() {
    if (s_batch == this)
        s_batch = nullptr;
}

std::tr1::shared_ptr<NumberingBucket> NumberingBatch::numbers(AcDbDatabase* database, AcRxClass* kind) {
    if (s_batch == nullptr)
        return makeBucket(database, kind);
    auto& bucket = s_batch->m_buckets[{database, kind}];
    if (!bucket)
        bucket = makeBucket(database, kind);
    return bucket;
}

} // namespace structure
