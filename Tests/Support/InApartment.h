#pragma once

#include <SystemServices/SafeCoInitialize.h>

#include <gtest/gtest.h>

/// A test whose thread has entered an apartment, as whoever makes the platform's XML objects must.
template <typename Test = testing::Test>
class InApartment : public Test {
protected:
    InApartment() { m_apartment.TryInitializeCom(0, false); }

private:
    SafeCoInitialize m_apartment;
};
