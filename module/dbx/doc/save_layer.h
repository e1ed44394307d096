#pragma once

#include "AdAChar.h"
#include "acutmem.h"

// Owns the text of a layer's name as the host allocated it.
class ORV_CSaveLayer {
public:
    // Takes the text over; null is none.
    explicit ORV_CSaveLayer(ACHAR* name) : m_name(name) {}
    ~ORV_CSaveLayer() { acutDelBuffer(m_name); }

    ORV_CSaveLayer(const ORV_CSaveLayer&) = delete;
    ORV_CSaveLayer& operator=(const ORV_CSaveLayer&) = delete;

    // Empty for none; valid while this object lives.
    const ACHAR* name() const { return m_name != nullptr ? m_name : L""; }

private:
    ACHAR* m_name;
};
