#include "Platform/Dom/DomTestSupport.h"

namespace {

/// Documents are made in an apartment.
class Apartment : public ::testing::Environment {
public:
    void SetUp() override { ASSERT_EQ(S_OK, ::CoInitializeEx(nullptr, COINIT_MULTITHREADED)); }
    void TearDown() override { ::CoUninitialize(); }
};

const auto* const apartment = ::testing::AddGlobalTestEnvironment(new Apartment);

} // namespace
