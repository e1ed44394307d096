#include "dbidmap.h"

#include "db/clone/clone_run.h"
#include "rxclass.h"

using embedded::CloneRun;

AcDbIdMapping::AcDbIdMapping() : m_run(std::make_unique<CloneRun>(*this)) {}

// A cloning that still waits for its translation would leave clones that lead into the other drawing.
AcDbIdMapping::~AcDbIdMapping() { m_run->abort(); }

bool AcDbIdMapping::assign(const AcDbIdPair& idPair) { return m_run->enter(idPair); }

bool AcDbIdMapping::compute(AcDbIdPair& idPair) const {
    const AcDbIdPair* pair = m_run->find(idPair.key());
    if (pair == nullptr)
        return false;
    idPair = *pair;
    return true;
}

bool AcDbIdMapping::change(const AcDbIdPair& idPair) {
    AcDbIdPair* pair = m_run->find(idPair.key());
    if (pair == nullptr)
        return false;
    *pair = idPair;
    return true;
}

bool AcDbIdMapping::del(const AcDbObjectId& key) { return m_run->takeOut(key); }

Acad::ErrorStatus AcDbIdMapping::destDb(AcDbDatabase*& database) const {
    database = m_run->destination;
    return database != nullptr ? Acad::eOk : Acad::eNoDatabase;
}

Acad::ErrorStatus AcDbIdMapping::setDestDb(AcDbDatabase* database) {
    if (m_run->active())
        return Acad::eInvalidContext;
    m_run->destination = database;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbIdMapping::origDb(AcDbDatabase*& database) const {
    database = m_run->original;
    return database != nullptr ? Acad::eOk : Acad::eNoDatabase;
}

AcDbObjectId AcDbIdMapping::insertingXrefBlockId() const { return AcDbObjectId(); }
AcDb::DeepCloneType AcDbIdMapping::deepCloneContext() const { return m_run->context; }
AcDb::DuplicateRecordCloning AcDbIdMapping::duplicateRecordCloning() const { return m_run->duplicates; }

AcDbIdMappingIter::AcDbIdMappingIter(const AcDbIdMapping& mapping) : m_mapping(mapping) { start(); }

void AcDbIdMappingIter::start() {
    const auto& pairs = m_mapping.m_run->pairs;
    for (m_at = 0; m_at < pairs.size() && pairs[m_at].key().isNull();)
        ++m_at;
}

bool AcDbIdMappingIter::done() const { return m_at >= m_mapping.m_run->pairs.size(); }

bool AcDbIdMappingIter::getMap(AcDbIdPair& idPair) const {
    if (done())
        return false;
    idPair = m_mapping.m_run->pairs[m_at];
    return true;
}

bool AcDbIdMappingIter::next() {
    const auto& pairs = m_mapping.m_run->pairs;
    if (m_at < pairs.size())
        ++m_at;
    while (m_at < pairs.size() && pairs[m_at].key().isNull())
        ++m_at;
    return !done();
}

ACRX_NO_CONS_DEFINE_MEMBERS(AcDbIdMapping, AcRxObject)
ACRX_NO_CONS_DEFINE_MEMBERS(AcDbIdMappingIter, AcRxObject)
