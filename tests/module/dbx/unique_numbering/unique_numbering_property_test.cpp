#include "numbered_drawing.h"
#include "support/report_recorder.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <utility>
#include <vector>

using testing_support::ReportRecorder;

namespace {

constexpr int kElements = 6;

// The table in the plainest form: pairs of element and number, and those of number and element.
struct Model {
    std::vector<std::pair<int, int>> numbers;
    std::vector<std::pair<int, int>> elements;
    std::size_t reports = 0;

    const int* numberOf(int element) const { return find(numbers, element); }
    const int* elementOf(int number) const { return find(elements, number); }
    void enter(int element, int number) {
        numbers.emplace_back(element, number);
        if (elementOf(number) != nullptr)
            ++reports;
        else
            elements.emplace_back(number, element);
    }
    int next() const {
        return numbers.empty() ? 1 : std::max_element(numbers.begin(), numbers.end())->second + 1;
    }
    bool allocate(int element, int number) {
        if (numberOf(element) != nullptr) {
            ++reports;
            return false;
        }
        enter(element, number);
        return true;
    }
    int getOrCreate(int element) {
        if (const int* number = numberOf(element))
            return *number;
        const int number = next();
        enter(element, number);
        return number;
    }

private:
    static const int* find(const std::vector<std::pair<int, int>>& pairs, int key) {
        for (const auto& pair : pairs)
            if (pair.first == key)
                return &pair.second;
        return nullptr;
    }
};

// Elements that every case shares; only their numbers differ.
struct Elements {
    Elements() {
        for (int i = 0; i < kElements; ++i)
            ids.push_back(drawing.add());
    }
    int indexOf(const AcDbObjectId& id) const {
        return static_cast<int>(std::find(ids.begin(), ids.end(), id) - ids.begin());
    }
    NumberedDrawing drawing;
    std::vector<AcDbObjectId> ids;
};

void expectSameTable(const NumberedDrawing::Bucket& bucket, const Model& model, const Elements& elements) {
    RC_ASSERT(bucket->nextFreeNo() == model.next());
    for (int number = -1; number < 12; ++number) {
        const boost::optional<AcDbObjectId> found = bucket->getIdByNo(number);
        const int* const expected = model.elementOf(number);
        RC_ASSERT(found.has_value() == (expected != nullptr));
        if (expected != nullptr)
            RC_ASSERT(elements.indexOf(*found) == *expected);
    }
}

} // namespace

TEST(NumberingProperty, ABucketBehavesLikeTwoListsOfPairs) {
    Elements elements;
    rc::check([&] {
        Model model;
        elements.drawing.numbers.clear();
        for (int i = 0; i < kElements; ++i) {
            if (!*rc::gen::arbitrary<bool>())
                continue;
            const int number = *rc::gen::inRange(0, 8);
            elements.drawing.numbers[elements.ids[static_cast<std::size_t>(i)]] = number;
            model.enter(i, number);
        }
        ReportRecorder reports;
        const auto bucket = elements.drawing.acquire();
        RC_ASSERT(reports.size() == model.reports);
        const int steps = *rc::gen::inRange(0, 12);
        for (int step = 0; step < steps; ++step) {
            const int element = *rc::gen::inRange(0, kElements);
            const AcDbObjectId& id = elements.ids[static_cast<std::size_t>(element)];
            if (*rc::gen::arbitrary<bool>()) {
                const int number = *rc::gen::inRange(0, 8);
                RC_ASSERT(bucket->allocate(id, number) == model.allocate(element, number));
            } else {
                RC_ASSERT(bucket->getOrCreateNo(id).value() == model.getOrCreate(element));
            }
            RC_ASSERT(reports.size() == model.reports);
            expectSameTable(bucket, model, elements);
        }
        RC_TAG(model.reports == 0 ? "no number taken twice" : "numbers taken twice");
    });
}
