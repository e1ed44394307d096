#include "dbx/elem/property_owner.h"

#include "support/report_recorder.h"
#include "support/slots.h"

#include <boost/optional/optional_io.hpp>
#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <vector>

using orv::property;
using orv::property_base;
using orv::property_owner;
using orv::TypeInfo;
using testing_support::ReportRecorder;
using testing_support::slotOf;
using testing_support::Texts;

namespace {

using Owner = property_owner<unsigned int>;

// The message of the failure that a call ends in.
template <class Failure, class Call>
std::string messageOf(Call call) {
    try {
        call();
    } catch (const Failure& failure) {
        return failure.what();
    }
    return "no failure";
}

bool endsWith(const std::string& text, const std::string& end) {
    return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

} // namespace

TEST(Property, ANewOneHasTheZeroOfItsType) {
    EXPECT_EQ(property<int>().m_value, 0);
    EXPECT_EQ(property<double>().m_value, 0.0);
    EXPECT_FALSE(property<bool>().m_value);
    EXPECT_EQ(property<std::wstring>().m_value, L"");
}

TEST(Property, TellsItsOwnTypeAndThatOfItsValue) {
    const property<double> number(1.5);
    const property_base& base = number;
    EXPECT_EQ(base.type(), TypeInfo(typeid(property<double>)));
    EXPECT_EQ(base.valueType(), TypeInfo(typeid(double)));
    EXPECT_NE(base.type(), base.valueType());
    EXPECT_EQ(boost::any_cast<double>(base.value()), 1.5);
}

TEST(Property, ValueIsACopy) {
    const property<std::wstring> text(L"before");
    boost::any copy = text.value();
    boost::any_cast<std::wstring&>(copy) = L"after";
    EXPECT_EQ(text.m_value, L"before");
}

TEST(Property, SetValueTakesAValueOfItsType) {
    property<int> number(1);
    EXPECT_TRUE(number.setValue(boost::any(2)));
    EXPECT_EQ(number.m_value, 2);
}

TEST(Property, SetValueOfAnotherTypeIsFalseAndKeepsTheValue) {
    property<int> number(1);
    EXPECT_FALSE(number.setValue(boost::any(2u)));
    EXPECT_FALSE(number.setValue(boost::any(2.0)));
    EXPECT_FALSE(number.setValue(boost::any()));
    EXPECT_EQ(number.m_value, 1);
}

TEST(Property, CannotBeCopied) {
    EXPECT_FALSE(std::is_copy_constructible_v<property<int>>);
    EXPECT_FALSE(std::is_copy_assignable_v<property<int>>);
}

TEST(Property, TheVirtualOperationsStandInTheirOrder) {
    property<int> number(42);
    // Two slots of the destructor stand in front.
    EXPECT_EQ(slotOf<TypeInfo (*)(const property_base*)>(&number, 2)(&number),
              TypeInfo(typeid(property<int>)));
    EXPECT_EQ(slotOf<TypeInfo (*)(const property_base*)>(&number, 3)(&number), TypeInfo(typeid(int)));
    EXPECT_EQ(boost::any_cast<int>(slotOf<boost::any (*)(const property_base*)>(&number, 4)(&number)), 42);
    EXPECT_TRUE(slotOf<bool (*)(property_base*, const boost::any&)>(&number, 5)(&number, boost::any(43)));
    EXPECT_EQ(number.m_value, 43);
}

TEST(TypeInfo, OrdersAsTheRunTimeTypesDo) {
    const TypeInfo one = typeid(int);
    const TypeInfo other = typeid(double);
    EXPECT_NE(one < other, other < one);
    EXPECT_EQ(one < other, typeid(int).before(typeid(double)));
    EXPECT_EQ(other < one, typeid(double).before(typeid(int)));
    EXPECT_FALSE(one < one);
    EXPECT_EQ(one.get(), typeid(int));
}

TEST(PropertyOwner, IsEmptyAtFirst) {
    const Owner owner;
    EXPECT_TRUE(owner.empty());
    EXPECT_EQ(owner.size(), 0u);
    EXPECT_TRUE(owner.begin() == owner.end());
    EXPECT_FALSE(owner.get(1));
}

TEST(PropertyOwner, AddTakesThePropertyItself) {
    Owner owner;
    const auto made = boost::make_shared<property<int>>(5);
    owner.add(3, boost::shared_ptr<property_base>(made));
    EXPECT_EQ(owner.get(3), made);
    owner.add(4, made); // a pointer is no value
    EXPECT_EQ(owner.get(4), made);
}

TEST(PropertyOwner, AddOfAValueMakesAPropertyOfItsType) {
    Owner owner;
    const boost::shared_ptr<property<double>> made = owner.add(3, 1.5);
    EXPECT_EQ(made->m_value, 1.5);
    EXPECT_EQ(owner.get(3), made);
    made->m_value = 2.5;
    EXPECT_EQ(owner.getCasted<double>(3), 2.5);
    EXPECT_EQ(owner.add<std::wstring>(4, L"text")->m_value, L"text");
}

TEST(PropertyOwner, KeepsItsEntriesInTheOrderOfTheKeys) {
    Owner owner;
    for (unsigned int key : {30003u, 7u, 0u, 4000000000u})
        owner.add(key, static_cast<double>(key));
    std::vector<unsigned int> keys;
    for (const auto& entry : owner)
        keys.push_back(entry.first);
    EXPECT_EQ(keys, (std::vector<unsigned int>{0, 7, 30003, 4000000000u}));
    EXPECT_EQ(owner.size(), 4u);
    owner.clear();
    EXPECT_TRUE(owner.empty());
}

TEST(PropertyOwner, AddOnAnExistingKeyThrowsAndKeepsTheOldEntry) {
    Owner owner;
    owner.add(7, 1);
    const std::string told = messageOf<orv::AlreadyExistsException>([&] { owner.add(7, 2); });
    EXPECT_EQ(told, "property_owner<>::add() Key already exists: 7");
    EXPECT_THROW(owner.add(7, boost::shared_ptr<property_base>()), orv::AlreadyExistsException);
    EXPECT_EQ(owner.getCasted<int>(7), 1);
    EXPECT_EQ(owner.size(), 1u);
}

TEST(PropertyOwner, GetCastedReadsAndWrites) {
    Owner owner;
    owner.add(7, 1);
    owner.getCasted<int>(7) = 5;
    EXPECT_EQ(owner.getCasted<int>(7), 5);
}

TEST(PropertyOwner, GetCastedOfAMissingKeyThrowsNotFound) {
    Owner owner;
    const std::string told = messageOf<orv::NotFoundException>([&] { owner.getCasted<double>(9); });
    EXPECT_EQ(told, "property_owner<>::getCasted<>() Key not found: 9");
}

TEST(PropertyOwner, GetCastedOfAnotherTypeNamesBothTypes) {
    Owner owner;
    owner.add(7, 1);
    const std::string told = messageOf<orv::TypeMismatchException>([&] { owner.getCasted<double>(7); });
    EXPECT_EQ(told, "type mismatch. Expected=double Got=int");
    EXPECT_THROW(owner.getCasted<unsigned int>(7), orv::TypeMismatchException);
}

TEST(PropertyOwner, GetValueNotThrowOfAMissingKeyIsEmptyWithoutAReport) {
    ReportRecorder recorder;
    EXPECT_FALSE(Owner().getValueNotThrow<int>(7));
    EXPECT_EQ(recorder.size(), 0u);
}

TEST(PropertyOwner, GetValueNotThrowOfAnotherTypeIsEmptyAndReports) {
    ReportRecorder recorder;
    Owner owner;
    owner.add(7, 1.5);
    EXPECT_FALSE(owner.getValueNotThrow<int>(7));
    EXPECT_EQ(recorder.conditions(), (Texts{"false"}));
    EXPECT_EQ(recorder.messages(), (Texts{"getValueNotThrow() failed"}));
    EXPECT_EQ(recorder.at(0).severity, orv::smartassert::Severity::kDebug);
}

TEST(PropertyOwner, GetValueNotThrowIsACopyOfTheValue) {
    ReportRecorder recorder;
    Owner owner;
    owner.add(7, 1);
    EXPECT_EQ(owner.getValueNotThrow<int>(7), 1);
    EXPECT_EQ(recorder.size(), 0u);
}

TEST(PropertyOwner, AnEntryWithoutAPropertyIsNotThere) {
    ReportRecorder recorder;
    Owner owner;
    owner.add(7, boost::shared_ptr<property_base>());
    EXPECT_FALSE(owner.get(7));
    EXPECT_THROW(owner.getCasted<int>(7), orv::NotFoundException);
    EXPECT_FALSE(owner.getValueNotThrow<int>(7));
    EXPECT_EQ(recorder.size(), 0u);
}

TEST(PropertyOwner, TakesTextsAsKeys) {
    property_owner<std::string> owner;
    owner.add("b", 1);
    owner.add("a", 2);
    EXPECT_EQ(owner.begin()->first, "a");
    EXPECT_TRUE(
        endsWith(messageOf<orv::NotFoundException>([&] { owner.getCasted<int>("c"); }), "Key not found: c"));
    EXPECT_TRUE(endsWith(messageOf<orv::AlreadyExistsException>([&] { owner.add("a", 3); }),
                         "Key already exists: a"));
}
