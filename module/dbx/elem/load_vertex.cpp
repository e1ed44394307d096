#include "dbx/elem/load_vertex.h"

#include "dbx/in_archive.h"
#include "dbx/out_archive.h"

namespace orv::elem {

namespace {

template <class Enumeration>
Enumeration readByte(serialization::IInArchive& archive) {
    unsigned char number = 0;
    archive >> number;
    return static_cast<Enumeration>(number);
}

} // namespace

void writeLoadVertex(serialization::IOutArchive& archive, const LoadVertex& vertex) {
    archive << static_cast<unsigned char>(vertex.posSource) << vertex.segment;
    archive << vertex.point << vertex.value << vertex.node;
    archive << static_cast<unsigned char>(vertex.distanceMode) << vertex.position << vertex.text;
}

void readLoadVertex(serialization::IInArchive& archive, bool hasText, LoadVertex& vertex) {
    vertex.posSource = readByte<PositionSource>(archive);
    archive >> vertex.segment;
    archive >> vertex.point >> vertex.value >> vertex.node;
    vertex.distanceMode = readByte<DistanceMode>(archive);
    archive >> vertex.position;
    if (hasText)
        archive >> vertex.text;
}

} // namespace orv::elem
