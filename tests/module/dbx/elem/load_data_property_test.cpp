#include "dbx/elem/load_data.h"

#include "dbx/keyvalue_serialization.h"
#include "support/beep_recorder.h"
#include "support/registry_tree.h"

#include <boost/optional/optional_io.hpp>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

using namespace orv::elem;
using orv::KeyValueTreeReaderWriter;

namespace {

template <class T>
boost::optional<T> perhaps(const rc::Gen<T>& value) {
    return *rc::gen::arbitrary<bool>() ? boost::optional<T>(*value) : boost::none;
}

rc::Gen<double> anyNumber() {
    return rc::gen::oneOf(rc::gen::arbitrary<double>(), rc::gen::element(0.0, -0.0, 1e-11, 1.0, 1e300));
}

// What can be saved: names of characters with a byte, and geometry of two positions alone.
LoadData anyRecord() {
    LoadData data;
    data.m_state = *rc::gen::arbitrary<int>();
    data.m_name = *rc::gen::container<std::wstring>(
        rc::gen::map(rc::gen::inRange(1, 256), [](int number) { return static_cast<wchar_t>(number); }));
    data.m_loadCases = *rc::gen::arbitrary<std::set<unsigned int>>();
    data.m_kind = static_cast<LOAD_KIND>(*rc::gen::arbitrary<int>());
    data.m_type = *rc::gen::arbitrary<int>();
    data.m_distribution = perhaps(rc::gen::cast<LoadDistribution>(rc::gen::inRange(-1, 5)));
    data.m_distributionCurve = perhaps(rc::gen::cast<LineLoadDistributionCurve>(rc::gen::arbitrary<int>()));
    data.m_value1 = *anyNumber();
    data.m_value2 = perhaps(anyNumber());
    data.m_value3 = perhaps(anyNumber());
    if (*rc::gen::arbitrary<bool>())
        data.m_geometry = EditTwoVerticesData{0, *anyNumber(), 0, *anyNumber(), AcDbObjectId(), 0.0};
    return data;
}

class AnyLoadData : public testing_support::RegistryTreeTest {};

} // namespace

RC_GTEST_FIXTURE_PROP(AnyLoadData, ComesBackFromItsTree, ()) {
    platform::registry::deleteKey(kWideBase);
    const LoadData saved = anyRecord();
    const testing_support::BeepRecorder beeps;
    KeyValueTreeReaderWriter rw(kBase);
    LoadData::save(rw.nodeBegin("load"), saved);
    LoadData back;
    LoadData::load(rw, back);
    RC_ASSERT(back == saved);
    // Numbers come back to the last bit, and what is missing is missing.
    RC_ASSERT(back.m_value1 == saved.m_value1);
    RC_ASSERT(back.m_value2 == saved.m_value2);
    RC_ASSERT(back.m_value3 == saved.m_value3);
    RC_ASSERT(back.m_geometry.has_value() == saved.m_geometry.has_value());
    RC_ASSERT(beeps.lines().empty());
}

RC_GTEST_FIXTURE_PROP(AnyLoadData, SavedOverAnotherRecordComesBackAlone, ()) {
    platform::registry::deleteKey(kWideBase);
    KeyValueTreeReaderWriter rw(kBase);
    LoadData::save(rw, anyRecord());
    const LoadData saved = anyRecord();
    LoadData::save(rw, saved);
    LoadData back;
    LoadData::load(rw, back);
    RC_ASSERT(back == saved);
}

RC_GTEST_PROP(LoadDataLaws, EqualityIsReflexive, ()) {
    const LoadData data = anyRecord();
    RC_ASSERT(data == data);
    RC_ASSERT(LoadData(data) == data);
}

// Where values do not lie at the very edge of the tolerance, which is measured by the left one.
RC_GTEST_PROP(LoadDataLaws, EqualityIsSymmetric, ()) {
    const LoadData left = anyRecord();
    LoadData right = left;
    if (*rc::gen::arbitrary<bool>())
        right.m_value2 = perhaps(anyNumber());
    if (*rc::gen::arbitrary<bool>())
        right.m_value1 = *anyNumber();
    if (*rc::gen::arbitrary<bool>())
        right.m_loadCases = *rc::gen::arbitrary<std::set<unsigned int>>();
    RC_ASSERT((left == right) == (right == left));
}
