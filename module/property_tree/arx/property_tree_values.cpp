#include "property_tree/arx/property_tree_filer.h"

#include "base/assert.h"
#include "property_tree/arx/filed_text.h"

#include "dbfiler.h"
#include "gemat3d.h"
#include "gepnt3d.h"
#include "gevec3d.h"

#include <string>
#include <typeindex>

namespace orv::property_tree {

namespace {

using Writer = Acad::ErrorStatus (*)(AcDbDwgFiler& filer, const boost::any& v);
using Reader = Acad::ErrorStatus (*)(AcDbDwgFiler& filer, boost::any& v);

struct ValueKind {
    char tag;
    const std::type_info& type;
    Writer write;
    Reader read;
};

template <class T>
const T& in(const boost::any& v) {
    return *boost::unsafe_any_cast<T>(&v); // the table's row was chosen by the type
}

// Reads by one call of the filer; the target changes only if that succeeds.
template <class T, class Filed, Acad::ErrorStatus (AcDbDwgFiler::*read)(Filed*)>
Acad::ErrorStatus readOne(AcDbDwgFiler& filer, boost::any& v) {
    Filed value = Filed();
    const Acad::ErrorStatus es = (filer.*read)(&value);
    if (es == Acad::eOk)
        v = T(value);
    return es;
}

template <class T, class Filed, Acad::ErrorStatus (AcDbDwgFiler::*write)(Filed)>
Acad::ErrorStatus writeOne(AcDbDwgFiler& filer, const boost::any& v) {
    return (filer.*write)(in<T>(v));
}

Acad::ErrorStatus writeNothing(AcDbDwgFiler&, const boost::any&) { return Acad::eOk; }

Acad::ErrorStatus readNothing(AcDbDwgFiler&, boost::any& v) {
    v = boost::any();
    return Acad::eOk;
}

Acad::ErrorStatus writeString(AcDbDwgFiler& filer, const boost::any& v) {
    return writeText(filer, in<std::string>(v));
}

Acad::ErrorStatus readString(AcDbDwgFiler& filer, boost::any& v) {
    std::string text;
    const Acad::ErrorStatus es = readText(filer, text);
    if (es == Acad::eOk)
        v = text;
    return es;
}

Acad::ErrorStatus writeMatrix(AcDbDwgFiler& filer, const boost::any& v) {
    const auto& matrix = in<AcGeMatrix3d>(v);
    for (const auto& row : matrix.entry)
        for (double number : row) {
            const Acad::ErrorStatus es = filer.writeDouble(number);
            if (es != Acad::eOk)
                return es;
        }
    return Acad::eOk;
}

Acad::ErrorStatus readMatrix(AcDbDwgFiler& filer, boost::any& v) {
    AcGeMatrix3d matrix;
    for (auto& row : matrix.entry)
        for (double& number : row) {
            const Acad::ErrorStatus es = filer.readDouble(&number);
            if (es != Acad::eOk)
                return es;
        }
    v = matrix;
    return Acad::eOk;
}

using F = AcDbDwgFiler;

// Every type that can be filed, in the order in which the writer asks for it. Both kinds of id are filed
// alike; the tag alone tells them apart.
const ValueKind kKinds[] = {
    {'N', typeid(void), &writeNothing, &readNothing},
    {'b', typeid(bool), &writeOne<bool, bool, &F::writeBool>, &readOne<bool, bool, &F::readBool>},
    {'i', typeid(int), &writeOne<int, Adesk::Int32, &F::writeInt32>,
     &readOne<int, Adesk::Int32, &F::readInt32>},
    {'d', typeid(double), &writeOne<double, double, &F::writeDouble>,
     &readOne<double, double, &F::readDouble>},
    {'s', typeid(std::string), &writeString, &readString},
    {'o', typeid(AcDbObjectId), &writeOne<AcDbObjectId, const AcDbSoftPointerId&, &F::writeSoftPointerId>,
     &readOne<AcDbObjectId, AcDbSoftPointerId, &F::readSoftPointerId>},
    {'x', typeid(AcDbSoftPointerId),
     &writeOne<AcDbSoftPointerId, const AcDbSoftPointerId&, &F::writeSoftPointerId>,
     &readOne<AcDbSoftPointerId, AcDbSoftPointerId, &F::readSoftPointerId>},
    {'p', typeid(AcGePoint3d), &writeOne<AcGePoint3d, const AcGePoint3d&, &F::writePoint3d>,
     &readOne<AcGePoint3d, AcGePoint3d, &F::readPoint3d>},
    {'v', typeid(AcGeVector3d), &writeOne<AcGeVector3d, const AcGeVector3d&, &F::writeVector3d>,
     &readOne<AcGeVector3d, AcGeVector3d, &F::readVector3d>},
    {'m', typeid(AcGeMatrix3d), &writeMatrix, &readMatrix},
};

} // namespace

Acad::ErrorStatus dwgOutValue(AcDbDwgFiler& filer, const boost::any& v) {
    for (const ValueKind& kind : kKinds) {
        if (v.type() != kind.type)
            continue;
        const Acad::ErrorStatus es = filer.writeInt8(kind.tag);
        return es == Acad::eOk ? kind.write(filer, v) : es;
    }
    ORV_ASSERT(false)(v.type().name()).error("dwgOutNode(): Unknown type");
    return Acad::eKeyNotFound;
}

Acad::ErrorStatus dwgInValue(AcDbDwgFiler& filer, boost::any& v) {
    Adesk::Int8 tag = 0;
    const Acad::ErrorStatus es = filer.readInt8(&tag);
    if (es != Acad::eOk)
        return es;
    for (const ValueKind& kind : kKinds)
        if (kind.tag == tag)
            return kind.read(filer, v);
    ORV_ASSERT(false).debug("unhandled key");
    return Acad::eKeyNotFound;
}

} // namespace orv::property_tree
