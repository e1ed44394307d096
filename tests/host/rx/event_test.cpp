#include "embedded/event_source.h"

#include "rxclass.h"
#include "rxdict.h"

#include "support/console_recorder.h"

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>

namespace {

class Listener : public AcRxEventReactor {
public:
    Listener(std::wstring name, std::wstring& log) : m_name(std::move(name)), m_log(log) {}

    void databaseConstructed(AcDbDatabase*) override { say(L"made"); }
    void databaseToBeDestroyed(AcDbDatabase*) override { say(L"ends"); }
    void saveComplete(AcDbDatabase*, const ACHAR* name) override { say(name); }

    std::function<void()> whenCalled;

private:
    void say(const std::wstring& what) {
        m_log += m_name + what + L" ";
        if (whenCalled)
            whenCalled();
    }

    const std::wstring m_name;
    std::wstring& m_log;
};

TEST(Events, ReactorsAreCalledInTheOrderOfComing) {
    std::wstring log;
    Listener first(L"1", log);
    Listener second(L"2", log);
    acrxEvent->addReactor(&second);
    acrxEvent->addReactor(&first);
    acrxEvent->addReactor(&second);
    acrxEvent->addReactor(nullptr);
    embedded::events::databaseConstructed(nullptr);
    embedded::events::saveComplete(nullptr, L"file");
    acrxEvent->removeReactor(&second);
    embedded::events::databaseToBeDestroyed(nullptr);
    acrxEvent->removeReactor(&first);
    embedded::events::databaseToBeDestroyed(nullptr);
    EXPECT_EQ(log, L"2made 1made 2file 1file 1ends ");
}

TEST(Events, ReactorsMayGoDuringACall) {
    std::wstring log;
    Listener first(L"1", log);
    Listener second(L"2", log);
    acrxEvent->addReactor(&first);
    acrxEvent->addReactor(&second);
    first.whenCalled = [&] {
        acrxEvent->removeReactor(&first);
        acrxEvent->removeReactor(&second);
    };
    embedded::events::databaseConstructed(nullptr);
    embedded::events::databaseConstructed(nullptr);
    EXPECT_EQ(log, L"1made ");
}

TEST(Events, WhateverAReactorLetsOutIsPrintedAndTheNextIsTold) {
    std::wstring log;
    Listener bad(L"1", log);
    Listener good(L"2", log);
    acrxEvent->addReactor(&bad);
    acrxEvent->addReactor(&good);
    const testing_support::ConsoleRecorder console;
    const std::function<void()> lettingOut[] = {
        [] { throw std::runtime_error("an exception"); },
        [] { throw Acad::eInvalidInput; },
        [] { throw L"a text"; },
        [] { throw 5; },
        [] { throw static_cast<const wchar_t*>(nullptr); },
    };
    for (const auto& call : lettingOut) {
        bad.whenCalled = call;
        EXPECT_NO_THROW(embedded::events::databaseConstructed(nullptr));
    }
    acrxEvent->removeReactor(&bad);
    acrxEvent->removeReactor(&good);
    EXPECT_EQ(log, L"1made 2made 1made 2made 1made 2made 1made 2made 1made 2made ");
    EXPECT_EQ(console.text(), L"A reactor failed: an exception\n"
                              L"A reactor failed: eInvalidInput\n"
                              L"A reactor failed: a text\n"
                              L"A reactor failed: something that is no std::exception was thrown\n"
                              L"A reactor failed: something that is no std::exception was thrown\n");
}

TEST(Events, IsAnEntryOfTheSystemRegistry) {
    EXPECT_EQ(AcRxEvent::cast(acrxSysRegistry()->at(ACRX_EVENT_OBJ)), acrxEvent);
}

} // namespace
