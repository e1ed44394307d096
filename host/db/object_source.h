#pragma once

#include "acadstrc.h"
#include "dbid.h"

#include <memory>
#include <string>
#include <vector>

class AcDbObject;
class AcRxClass;

namespace embedded {

// Where objects come from that are still bytes: the drawing file that a database was read from.
class ObjectSource {
public:
    virtual ~ObjectSource() = default;

    // Makes the object of a stub that has a fileIndex: creates it by its class, sets owner, reactors,
    // extension dictionary and extended data (ObjectAccess), and lets it file itself in (the stub has
    // kLoading and names the object already, so that the write checks pass). A class that is not registered,
    // or a reader that answers eMakeMeProxy, gives a proxy. Any other failure of the reader gives that status
    // and no object; the bytes stay. Sets kStandIn on the stub of a proxy.
    virtual Acad::ErrorStatus load(AcDbStub& stub, std::unique_ptr<AcDbObject>& object) = 0;

    // The class of the object, without making it; the proxy class where it would be one. Never null.
    virtual AcRxClass* classOf(const AcDbStub& stub) = 0;

    // The DXF name of the object's kind as its file has it ("LINE", "DICTIONARY", a class row's name),
    // without making the object; also where no class is registered for it.
    virtual std::wstring dxfNameOf(const AcDbStub& stub) = 0;

    // The owner that the object's bytes name, without making it. Null for what cannot be read.
    virtual AcDbObjectId ownerOf(const AcDbStub& stub) = 0;

    // The entities of a block as the file chains them, from the first to the last that the block's record
    // names, without making them. A chain that does not end there is cut where it breaks.
    virtual std::vector<AcDbObjectId> entitiesOf(AcDbObjectId first, AcDbObjectId last) = 0;

    // Whether the class of a proxy has been registered since it was made.
    virtual bool canComeAlive(const AcDbStub& stub) = 0;
};

} // namespace embedded
