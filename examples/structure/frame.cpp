#include "structure/frame.h"

#include "structure/frame_builder.h"
#include "structure/moved_elements_reactor.h"
#include "structure/selections.h"
#include "structure/working_database.h"

#include "dbtrans.h"

#include <set>
#include <stdexcept>

namespace structure {

namespace {

constexpr int kMost = 100;

void check(const FrameOptions& options) {
    const bool counts =
        options.bays >= 1 && options.bays <= kMost && options.storeys >= 1 && options.storeys <= kMost;
    const bool lengths = options.bayLength > 0.0 && options.bayWidth > 0.0 && options.storeyHeight > 0.0;
    if (!counts || !lengths)
        throw std::runtime_error("a frame has 1 to 100 bays and storeys, and lengths above 0");
}

void select(AcDbDatabase& database, Frame& frame, const wchar_t* what,
            const std::vector<AcDbObjectId>& elements) {
    const std::wstring name = frame.system + L" " + what;
    const std::set<AcDbObjectId> ids(elements.begin(), elements.end());
    if (setSelection(database, name, ids) != Acad::eOk)
        throw std::runtime_error("the named selections cannot be made");
    frame.selections.push_back(name);
}

} // namespace

Frame buildFrame(AcDbDatabase& database, const FrameOptions& options) {
    check(options);
    const WorkingDatabase working(&database);
    const ModelStore store = findOrCreateStore(database, options.system, options.unit);
    AcDbTransactionManager& transactions = *database.transactionManager();
    transactions.startTransaction();
    Frame frame;
    std::vector<AcDbObjectId> roof;
    std::vector<std::pair<AcDbObjectId, AcDbObjectId>> loadsOverSlabs;
    try {
        FrameBuilder builder(database, options, store);
        frame = builder.build();
        roof = builder.roof();
        loadsOverSlabs = builder.loadsOverSlabs();
        if (store.isNew)
            describeModel(database, store, builder.lowestCorner(), builder.highestCorner(),
                          static_cast<int>(frame.nodes.size()));
    } catch (...) {
        transactions.abortTransaction();
        throw;
    }
    transactions.endTransaction();
    // Numbers are given when all is closed.
    processMovedElements(database);
    referToSlabs(loadsOverSlabs);
    select(database, frame, L"columns", frame.columns);
    select(database, frame, L"roof", roof);
    return frame;
}

} // namespace structure
