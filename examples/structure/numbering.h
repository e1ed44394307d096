#pragma once

#include "dbx/elem/plugin_general.h"
#include "dbx/unique_numbering/unique_numbering.h"
#include "structure/export.h"

#include <map>
#include <utility>

class AcDbDatabase;
class AcRxClass;

namespace structure {

// Gives the elements of a drawing their numbers: each kind counts for itself, from 1, and no two elements of
// a kind share one. Serves every element that has the general plugin, of whatever module.
class STRUCTURE_API Numbering : public orv::elem::Plugin_General_PE {
public:
    // Lives as long as the module's code.
    static Numbering& instance();

    // As it is asked for: whoever numbers many elements anew may pass through numbers that are taken.
    void setNumber(orv::elem::Plugin_General& plugin, unsigned int number) override;
    // A copy gets a number of its own.
    void onPostClone(orv::elem::Plugin_General& plugin) override;
    // One that comes back keeps its number, unless another one has got it meanwhile. An undo puts the old
    // state back by itself.
    void onErase(orv::elem::Plugin_General& plugin, bool erasing) override;

    // The next number that is free. Needs write, and that model space can be walked: it may not be open for
    // write. Nothing for an element in no drawing.
    void giveNumber(orv::elem::Plugin_General& plugin);

private:
    Numbering() = default;
};

// While it lives, all numbers are given from the same tables: each takes a walk over the whole drawing to
// make. For the stack. They nest; the outermost one has the tables.
class STRUCTURE_API NumberingBatch {
public:
    NumberingBatch();
    ~NumberingBatch();

    NumberingBatch(const NumberingBatch&) = delete;
    NumberingBatch& operator=(const NumberingBatch&) = delete;

    // The numbers of one kind in a drawing: from the running batch, or else made anew.
    static std::tr1::shared_ptr<orv::numbering::NumberingBucket> numbers(AcDbDatabase* database,
                                                                         AcRxClass* kind);

private:
    using Kind = std::pair<AcDbDatabase*, AcRxClass*>;

    std::map<Kind, std::tr1::shared_ptr<orv::numbering::NumberingBucket>> m_buckets;
};

} // namespace structure
