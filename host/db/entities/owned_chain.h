#pragma once

#include "db/clone/access_rights.h"
#include "dbmain.h"

#include <memory>
#include <vector>

namespace embedded {

// What an entity owns in an order that its file chains: the attributes of a block reference, the vertices of
// a polyline, and the entity that ends them. The file names the first and the last of them; all other filers
// get the ids.
class OwnedChain {
public:
    // The parts that are not erased, in their order.
    std::vector<AcDbObjectId> live() const;
    // Erased ones count.
    bool holds(AcDbObjectId id) const;
    AcDbObjectId end() const { return m_end; }
    // Of an owner that is in no database.
    const std::vector<std::unique_ptr<AcDbEntity>>& loose() const { return m_loose; }

    // Makes a fresh entity a part, in front of the one that has the place. It gets an id, the owner's
    // settings if it has no layer yet, and stays open for write. The owner has to be in a database and to
    // have taken its state down.
    AcDbObjectId insert(AcDbEntity& owner, AcDbEntity& part, std::size_t place);
    static constexpr std::size_t kAtEnd = static_cast<std::size_t>(-1);
    // The place of a part among all, for insert; kAtEnd if it is none.
    std::size_t placeOf(AcDbObjectId id) const;
    void keepLoose(std::unique_ptr<AcDbEntity> part) { m_loose.push_back(std::move(part)); }
    // Hands loose parts over to the database that the owner has come into, closed.
    void store(AcDbEntity& owner);

    // What went with the owner comes back with it; what was erased before stays so.
    void erase(bool erasing);

    // Whether the file has anything to tell.
    bool isFiled() const { return !m_firstFiled.isNull() || !live().empty(); }
    void write(AcDbDwgFiler& filer) const;
    // A copy takes over what the other looks like and keeps the parts that are its own, or none.
    void read(AcDbDwgFiler& filer);

private:
    const std::vector<AcDbObjectId>& ids() const;

    // Those of the file are found at the first look, by the two that it names.
    mutable std::vector<AcDbObjectId> m_ids;
    mutable AcDbObjectId m_firstFiled;
    mutable AcDbObjectId m_lastFiled;
    AcDbObjectId m_end;
    std::vector<AcDbObjectId> m_erasedWithOwner;
    std::vector<std::unique_ptr<AcDbEntity>> m_loose;
};

// The chain of an entity that owns one; null for all others.
const OwnedChain* ownedChainOf(const AcDbObject& object);

// The parts of a chain to be looked at, as they stand now, for as long as this lasts. What cannot be read, or
// is of another class, is left out.
template <class Part>
class PartsToRead {
public:
    explicit PartsToRead(const OwnedChain& chain) {
        for (const std::unique_ptr<AcDbEntity>& part : chain.loose())
            take(part.get());
        for (const AcDbObjectId& id : chain.live()) {
            m_rights.push_back(std::make_unique<ReadRight>(id));
            if (m_rights.back()->status() == Acad::eOk)
                take(m_rights.back()->object());
        }
    }
    const std::vector<const Part*>& parts() const { return m_parts; }

private:
    void take(const AcDbObject* object) {
        if (const auto* part = dynamic_cast<const Part*>(object))
            m_parts.push_back(part);
    }
    std::vector<std::unique_ptr<ReadRight>> m_rights;
    std::vector<const Part*> m_parts;
};

// The parts of a chain to be changed. All of them, or none with the status of the one that refused.
template <class Part>
class PartsToWrite {
public:
    explicit PartsToWrite(const OwnedChain& chain) {
        for (const std::unique_ptr<AcDbEntity>& part : chain.loose())
            if (auto* loose = dynamic_cast<Part*>(part.get()))
                m_parts.push_back(loose);
        for (const AcDbObjectId& id : chain.live()) {
            Part* part = nullptr;
            m_status = acdbOpenObject(part, id, AcDb::kForWrite);
            if (m_status != Acad::eOk)
                break;
            m_parts.push_back(part);
        }
    }
    ~PartsToWrite() {
        // A loose one answers that it is in no database, and stays.
        for (Part* part : m_parts)
            part->close();
    }
    PartsToWrite(const PartsToWrite&) = delete;
    PartsToWrite& operator=(const PartsToWrite&) = delete;

    Acad::ErrorStatus status() const { return m_status; }
    const std::vector<Part*>& parts() const { return m_parts; }

private:
    std::vector<Part*> m_parts;
    Acad::ErrorStatus m_status = Acad::eOk;
};

} // namespace embedded
