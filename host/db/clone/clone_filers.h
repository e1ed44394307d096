#pragma once

#include "embedded/memory_filer.h"

#include <functional>
#include <utility>
#include <vector>

namespace embedded {

// The four kinds of reference that a filer tells apart.
enum class Strength : std::uint8_t { kSoftPointer, kHardPointer, kSoftOwner, kHardOwner };

constexpr bool owns(Strength strength) {
    return strength == Strength::kSoftOwner || strength == Strength::kHardOwner;
}
constexpr bool isHard(Strength strength) {
    return strength == Strength::kHardPointer || strength == Strength::kHardOwner;
}

struct FiledReference {
    AcDbObjectId id;
    Strength strength;
};

// Room for what one object files, to be used again for the next one.
struct FilingRoom {
    std::vector<std::uint8_t> bytes;
    std::vector<FiledReference> references;
};

// Lends a room out. Who is called meanwhile and needs one too gets an empty one.
class LentRoom {
public:
    explicit LentRoom(FilingRoom& owner) : m_owner(owner), m_room(std::move(owner)) {
        m_room.bytes.clear();
        m_room.references.clear();
    }
    ~LentRoom() { m_owner = std::move(m_room); }
    LentRoom(const LentRoom&) = delete;
    LentRoom& operator=(const LentRoom&) = delete;

    FilingRoom& operator*() { return m_room; }
    FilingRoom* operator->() { return &m_room; }

private:
    FilingRoom& m_owner;
    FilingRoom m_room;
};

// Keeps what an object files, and which ids are among it.
class GatheringFiler final : public MemoryFiler {
public:
    GatheringFiler(AcDb::FilerType type, std::vector<std::uint8_t>& bytes,
                   std::vector<FiledReference>& references)
        : MemoryFiler(type, bytes), m_references(references) {}

    Acad::ErrorStatus writeHardOwnershipId(const AcDbHardOwnershipId& id) override {
        note(id, Strength::kHardOwner);
        return MemoryFiler::writeHardOwnershipId(id);
    }
    Acad::ErrorStatus writeHardPointerId(const AcDbHardPointerId& id) override {
        note(id, Strength::kHardPointer);
        return MemoryFiler::writeHardPointerId(id);
    }
    Acad::ErrorStatus writeSoftOwnershipId(const AcDbSoftOwnershipId& id) override {
        note(id, Strength::kSoftOwner);
        return MemoryFiler::writeSoftOwnershipId(id);
    }
    Acad::ErrorStatus writeSoftPointerId(const AcDbSoftPointerId& id) override {
        note(id, Strength::kSoftPointer);
        return MemoryFiler::writeSoftPointerId(id);
    }

private:
    void note(const AcDbObjectId& id, Strength strength) {
        if (!id.isNull())
            m_references.push_back({id, strength});
    }

    std::vector<FiledReference>& m_references;
};

using Translate = std::function<AcDbObjectId(const AcDbObjectId&, Strength)>;

// Gives an object its own fields back with other ids in them.
class TranslatingFiler final : public MemoryFiler {
public:
    // Both must outlive the filer.
    TranslatingFiler(const std::vector<std::uint8_t>& bytes, const Translate& translate)
        : MemoryFiler(AcDb::kIdXlateFiler, bytes.data(), bytes.size()), m_translate(translate) {}

    Acad::ErrorStatus readHardOwnershipId(AcDbHardOwnershipId* id) override {
        return translated(id, MemoryFiler::readHardOwnershipId(id), Strength::kHardOwner);
    }
    Acad::ErrorStatus readHardPointerId(AcDbHardPointerId* id) override {
        return translated(id, MemoryFiler::readHardPointerId(id), Strength::kHardPointer);
    }
    Acad::ErrorStatus readSoftOwnershipId(AcDbSoftOwnershipId* id) override {
        return translated(id, MemoryFiler::readSoftOwnershipId(id), Strength::kSoftOwner);
    }
    Acad::ErrorStatus readSoftPointerId(AcDbSoftPointerId* id) override {
        return translated(id, MemoryFiler::readSoftPointerId(id), Strength::kSoftPointer);
    }

private:
    template <class Id>
    Acad::ErrorStatus translated(Id* id, Acad::ErrorStatus es, Strength strength) {
        if (es == Acad::eOk && !id->isNull())
            *id = Id(m_translate(*id, strength));
        return es;
    }

    const Translate& m_translate;
};

} // namespace embedded
