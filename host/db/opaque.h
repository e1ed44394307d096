#pragma once

#include "db/object_access.h"

namespace embedded {

// An object of a kind that is the host's own but that this host has no code for. Its class is known by name;
// what it holds stays bytes.
class OpaqueObject : public AcDbObject {
public:
    explicit OpaqueObject(AcRxClass* kind) : m_kind(kind) {}
    AcRxClass* isA() const override { return m_kind; }
    std::unique_ptr<ObjectBody> body;

private:
    AcRxClass* m_kind;
};

class OpaqueEntity : public AcDbEntity {
public:
    explicit OpaqueEntity(AcRxClass* kind) : m_kind(kind) {}
    AcRxClass* isA() const override { return m_kind; }
    std::unique_ptr<ObjectBody> body;

private:
    AcRxClass* m_kind;
};

} // namespace embedded
