#include "base/exceptions.h"

#include "support/slots.h"

#include <gtest/gtest.h>

TEST(Exceptions, TypeMismatchOfTwoUnknownTypesShowsNullOnBothSides) {
    const orv::TypeMismatchException e(nullptr, nullptr, "dropped");
    EXPECT_STREQ(e.what(), "type mismatch. Expected=<null> Got=<null>");
}

TEST(Exceptions, TypeMismatchHasReadableNamesAndNoContext) {
    const orv::TypeMismatchException e(&typeid(int), &typeid(double), "property_owner<>::getCasted<>()");
    EXPECT_STREQ(e.what(), "type mismatch. Expected=int Got=double");
}

TEST(Exceptions, NotFoundWithoutContextStartsWithABlank) {
    EXPECT_STREQ(orv::NotFoundException(12u, "").what(), " Key not found: 12");
}

TEST(Exceptions, NotFoundAndAlreadyExistsKeepTheKey) {
    const orv::NotFoundException missing(std::string("id"), "owner");
    EXPECT_STREQ(missing.what(), "owner Key not found: id");
    EXPECT_EQ(missing.key, "id");
    const orv::AlreadyExistsException present(4294967295u, "property_owner<>::add()");
    EXPECT_STREQ(present.what(), "property_owner<>::add() Key already exists: 4294967295");
    EXPECT_EQ(present.key, "4294967295");
}

TEST(Exceptions, IOErrorIsNarrowed) {
    const orv::IOErrorException e(L"failed to open NOD cdb '\u00e4'.");
#if defined(_WIN32)
    EXPECT_STREQ(e.what(), "failed to open NOD cdb '\xE4'.");
#else
    EXPECT_STREQ(e.what(), "failed to open NOD cdb '\xC3\xA4'.");
#endif
}

TEST(Exceptions, CopiesHaveTheirOwnTexts) {
    orv::AlreadyExistsException original(1u, "a");
    const orv::AlreadyExistsException copy = original;
    original.message = "changed";
    original.key = "2";
    EXPECT_STREQ(copy.what(), "a Key already exists: 1");
    EXPECT_EQ(copy.key, "1");
}

TEST(Exceptions, AreCaughtAsTheirBases) {
    EXPECT_THROW(throw orv::IOErrorException(L"x"), orv::Exception);
    EXPECT_THROW(throw orv::TypeMismatchException(nullptr, nullptr, ""), orv::Exception);
    EXPECT_THROW(throw orv::NotFoundException(1u, ""), orv::Exception);
    EXPECT_THROW(throw orv::AlreadyExistsException(1u, ""), orv::Exception);
    EXPECT_THROW(throw orv::ExceptionButNoOutput(), orv::Exception);
    EXPECT_THROW(throw orv::Exception("x"), std::exception);
}

// Where a destructor takes two slots.
#if !defined(_MSC_VER)
TEST(Exceptions, VirtualTableBeginsWithTheDestructorAndHoldsWhatNext) {
    const orv::Exception e("text");
    using What = const char* (*)(const void*);
    EXPECT_STREQ(testing_support::slotOf<What>(&e, 2)(&e), "text");
}
#endif
