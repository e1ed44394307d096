#include "ratio.h"

#include "dbx/elem/ObjectProperties.h"
#include "embedded/host_start.h"
#include "embedded/memory_filer.h"
#include "gepnt3d.h"

#include <benchmark/benchmark.h>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <map>
#include <vector>

// A set of 1,000 properties of four types, filed through the memory filer, beside the same bytes written into
// a vector by hand, and the same set made from them by hand: no filer, no table of types.

namespace {

constexpr unsigned int kProperties = 1000;

using Bytes = std::vector<unsigned char>;

enum TypeId : std::uint32_t { kInt = 12, kBool = 20, kDouble = 21, kPoint = 200 };

const orv::AcadObjectProperties& filledOwner() {
    static const orv::AcadObjectProperties owner = [] {
        embedded::startHost();
        orv::AcadObjectProperties filled;
        for (unsigned int key = 1; key <= kProperties; ++key) {
            const double number = key * 0.25;
            switch (key % 4) {
            case 0:
                filled.add(key, static_cast<int>(key));
                break;
            case 1:
                filled.add(key, key % 8 == 1);
                break;
            case 2:
                filled.add(key, number);
                break;
            default:
                filled.add(key, AcGePoint3d(number, number, number));
            }
        }
        return filled;
    }();
    return owner;
}

// The value of each key without its property around it.
struct PlainValue {
    std::uint32_t key;
    std::uint32_t type;
    int whole;
    bool truth;
    std::array<double, 3> numbers;
};

std::vector<PlainValue> plainValues() {
    std::vector<PlainValue> values;
    for (const auto& [key, prop] : filledOwner()) {
        const double number = key * 0.25;
        const TypeId types[] = {kInt, kBool, kDouble, kPoint};
        values.push_back(
            {key, types[key % 4], static_cast<int>(key), key % 8 == 1, {number, number, number}});
    }
    return values;
}

template <class T>
void put(Bytes& bytes, const T& value) {
    const auto* first = reinterpret_cast<const unsigned char*>(&value);
    bytes.insert(bytes.end(), first, first + sizeof value);
}

template <class T>
void take(const Bytes& bytes, std::size_t& at, T& value) {
    if (bytes.size() - at < sizeof value)
        std::abort();
    std::memcpy(&value, bytes.data() + at, sizeof value);
    at += sizeof value;
}

void writePlain(const std::vector<PlainValue>& values, Bytes& bytes) {
    put(bytes, static_cast<std::uint32_t>(values.size()));
    for (const PlainValue& value : values) {
        put(bytes, value.key);
        put(bytes, value.type);
        if (value.type == kInt)
            put(bytes, value.whole);
        else if (value.type == kBool)
            put(bytes, static_cast<unsigned char>(value.truth));
        else if (value.type == kDouble)
            put(bytes, value.numbers[0]);
        else
            for (double number : value.numbers)
                put(bytes, number);
    }
}

template <class T>
boost::shared_ptr<orv::property_base> taken(const Bytes& bytes, std::size_t& at) {
    T value = T();
    take(bytes, at, value);
    return boost::make_shared<orv::property<T>>(value);
}

using PlainSet = std::map<unsigned int, boost::shared_ptr<orv::property_base>>;

void readPlain(const Bytes& bytes, PlainSet& set) {
    std::size_t at = 0;
    std::uint32_t count = 0;
    take(bytes, at, count);
    for (std::uint32_t i = 0; i < count; ++i) {
        std::uint32_t key = 0;
        std::uint32_t type = 0;
        take(bytes, at, key);
        take(bytes, at, type);
        set[key] = type == kInt      ? taken<int>(bytes, at)
                   : type == kBool   ? taken<bool>(bytes, at)
                   : type == kDouble ? taken<double>(bytes, at)
                                     : taken<AcGePoint3d>(bytes, at);
    }
}

Bytes filedBytes() {
    Bytes bytes;
    embedded::MemoryFiler filer(AcDb::kCopyFiler, bytes);
    if (orv::dwgOutProperties(filer, filledOwner()) != Acad::eOk)
        std::abort();
    Bytes plain;
    writePlain(plainValues(), plain);
    if (plain != bytes) // else the two would not do the same work
        std::abort();
    return bytes;
}

void fileOut(benchmark::State& state) {
    const orv::AcadObjectProperties& owner = filledOwner();
    Bytes bytes;
    for (auto _ : state) {
        bytes.clear();
        embedded::MemoryFiler filer(AcDb::kCopyFiler, bytes);
        if (orv::dwgOutProperties(filer, owner) != Acad::eOk)
            std::abort();
        benchmark::DoNotOptimize(bytes.data());
    }
    state.SetItemsProcessed(state.iterations() * kProperties);
}
BENCHMARK(fileOut)->Unit(benchmark::kMicrosecond)->Repetitions(3);

void plainOut(benchmark::State& state) {
    const std::vector<PlainValue> values = plainValues();
    Bytes bytes;
    for (auto _ : state) {
        bytes.clear();
        writePlain(values, bytes);
        benchmark::DoNotOptimize(bytes.data());
    }
    state.SetItemsProcessed(state.iterations() * kProperties);
}
BENCHMARK(plainOut)->Unit(benchmark::kMicrosecond)->Repetitions(3);

void fileIn(benchmark::State& state) {
    const Bytes bytes = filedBytes();
    for (auto _ : state) {
        orv::AcadObjectProperties owner;
        embedded::MemoryFiler filer(AcDb::kCopyFiler, bytes.data(), bytes.size());
        if (orv::dwgInProperties(filer, owner) != Acad::eOk || owner.size() != kProperties)
            std::abort();
    }
    state.SetItemsProcessed(state.iterations() * kProperties);
}
BENCHMARK(fileIn)->Unit(benchmark::kMicrosecond)->Repetitions(3);

void plainIn(benchmark::State& state) {
    const Bytes bytes = filedBytes();
    for (auto _ : state) {
        PlainSet set;
        readPlain(bytes, set);
        if (set.size() != kProperties)
            std::abort();
    }
    state.SetItemsProcessed(state.iterations() * kProperties);
}
BENCHMARK(plainIn)->Unit(benchmark::kMicrosecond)->Repetitions(3);

const Comparison comparisons[] = {
    {"file out 1,000 properties, against plain bytes", "fileOut", "plainOut", 5.0},
    {"file them in, against a set made by hand", "fileIn", "plainIn", 5.0},
};

} // namespace
