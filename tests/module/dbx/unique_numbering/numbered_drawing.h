#pragma once

#include "dbx/unique_numbering/unique_numbering.h"

#include "dbapserv.h"
#include "dbents.h"
#include "dbmain.h"
#include "dbsymtb.h"

#include <boost/optional/optional_io.hpp> // for failures to show
#include <gtest/gtest.h>

#include <map>
#include <vector>

// A drawing that is worked in, with points in it, and the numbers that are stored on them.
class NumberedDrawing {
public:
    using Bucket = std::tr1::shared_ptr<orv::numbering::NumberingBucket>;

    NumberedDrawing() : db(true) { acdbHostApplicationServices()->setWorkingDatabase(&db); }
    ~NumberedDrawing() { acdbHostApplicationServices()->setWorkingDatabase(nullptr); }

    // An entity behind the others; its id is the greatest one.
    AcDbObjectId add(AcDbEntity* entity, const wchar_t* block = ACDB_MODEL_SPACE) {
        AcDbBlockTable* table = nullptr;
        EXPECT_EQ(db.getBlockTable(table, AcDb::kForRead), Acad::eOk);
        AcDbBlockTableRecord* record = nullptr;
        EXPECT_EQ(table->getAt(block, record, AcDb::kForWrite), Acad::eOk);
        table->close();
        AcDbObjectId id;
        EXPECT_EQ(record->appendAcDbEntity(id, entity), Acad::eOk);
        entity->close();
        record->close();
        return id;
    }
    AcDbObjectId add() { return add(new AcDbPoint); }
    AcDbObjectId add(int no) {
        const AcDbObjectId id = add();
        numbers[id] = no;
        return id;
    }

    // Answers from `numbers`, and writes down who was asked for.
    orv::numbering::NumberingBucket::Callback callback() {
        return [this](const AcDbObjectId& id) {
            asked.push_back(id);
            const auto found = numbers.find(id);
            return found != numbers.end() ? boost::optional<int>(found->second) : boost::none;
        };
    }
    Bucket acquire() {
        asked.clear();
        return orv::numbering::NumberingBucket::acquire(&db, callback());
    }

    AcDbDatabase db;
    std::map<AcDbObjectId, int> numbers;
    std::vector<AcDbObjectId> asked;
};
