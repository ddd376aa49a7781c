#include "Support/FailureSweep.h"
#include "Support/FakePrinterPropertyBag.h"
#include "Support/Rows.h"
#include "Support/VirtualSlots.h"

#include <PropertyBags/NativeComPrinterPropertyBagAccess.h>
#include <Spooler/QueuePropertyBag.h>

#include <gtest/gtest.h>

#include <memory>

namespace {

struct NativeComPrinterPropertyBagAccessTest : testing::Test {
    CComPtr<FakePrinterPropertyBag> bag = MakeFake<FakePrinterPropertyBag>();
    std::unique_ptr<IPrinterPropertyBagAccess> access = std::make_unique<NativeComPrinterPropertyBagAccess>(
        *bag, NativeComPrinterPropertyBagAccess::AssertionPolicyBagIsHeldElsewhere);
    const CXString key{L"Key"};
    ByteBuffer bytes = [] {
        ByteBuffer filled;
        filled.setWithLpbyte(reinterpret_cast<const unsigned char*>("old"), 3);
        return filled;
    }();

    static std::string Text(const ByteBuffer& buffer) { return {buffer.begin(), buffer.end()}; }
    static ByteBuffer Bytes(const std::string& text) {
        return ByteBuffer(reinterpret_cast<const unsigned char*>(text.data()), text.size());
    }
};

TEST_F(NativeComPrinterPropertyBagAccessTest, SimpleValuesGoThereAndBack) {
    access->SetPrinterPropertyBagBool(key, true);
    EXPECT_TRUE(access->GetPrinterPropertyBagBool(key));
    access->SetPrinterPropertyBagInteger(key, -7);
    EXPECT_EQ(access->GetPrinterPropertyBagInteger(key), -7);
    const CXString withZero(L"a\0\xD83D\xDE00", 4);
    access->SetPrinterPropertyBagString(key, withZero);
    CXString text(L"old");
    access->GetPrinterPropertyBagString(key, text);
    EXPECT_EQ(text, withZero);
    access->SetPrinterPropertyBagBytes(key, Bytes(std::string("a\0b", 3)));
    access->GetPrinterPropertyBagBytes(key, bytes);
    EXPECT_EQ(Text(bytes), std::string("a\0b", 3));
    bag->SetBytes(CComBSTR(L"Key"), 0, nullptr);
    access->GetPrinterPropertyBagBytes(key, bytes);
    EXPECT_TRUE(bytes.empty());
    EXPECT_EQ(bag->BytesHandedOut(), 2); // and the sanitizer knows whether they came back
    EXPECT_EQ(bag->References(), 1u) << "the bag is not held";
}

TEST_F(NativeComPrinterPropertyBagAccessTest, MissingValuesAreFalseZeroAndEmpty) {
    CXString text(L"old");
    CPString narrow("old");
    EXPECT_FALSE(access->GetPrinterPropertyBagBool(key));
    EXPECT_EQ(access->GetPrinterPropertyBagInteger(key), 0);
    access->GetPrinterPropertyBagString(key, text);
    EXPECT_TRUE(text.IsEmpty());
    access->GetPrinterPropertyBagStreamAsCPString(key, narrow);
    EXPECT_TRUE(narrow.isEmpty());
    for (const auto read : {&IPrinterPropertyBagAccess::GetPrinterPropertyBagBytes,
                            &IPrinterPropertyBagAccess::GetPrinterPropertyBagStreamBuffer,
                            &IPrinterPropertyBagAccess::GetPrinterPropertyBagCompressedStreamBuffer}) {
        bytes = Bytes("old");
        (access.get()->*read)(key, bytes);
        EXPECT_TRUE(bytes.empty());
    }
}

TEST_F(NativeComPrinterPropertyBagAccessTest, ShorterStreamReplacesTheLongerOneWhole) {
    access->SetPrinterPropertyBagStreamBuffer(key, Bytes("a longer value \xC3\xA4"));
    access->GetPrinterPropertyBagStreamBuffer(key, bytes);
    EXPECT_EQ(Text(bytes), "a longer value \xC3\xA4");
    CPString narrow;
    access->GetPrinterPropertyBagStreamAsCPString(key, narrow);
    EXPECT_STREQ(narrow.utf8Bytes(), "a longer value \xC3\xA4");

    access->SetPrinterPropertyBagStreamBuffer(key, Bytes("short"));
    access->GetPrinterPropertyBagCompressedStreamBuffer(key, bytes);
    EXPECT_EQ(Text(bytes), "short");
    access->SetPrinterPropertyBagStreamBuffer(key, ByteBuffer());
    access->GetPrinterPropertyBagStreamBuffer(key, bytes);
    EXPECT_TRUE(bytes.empty());
}

TEST_F(NativeComPrinterPropertyBagAccessTest, StreamThatCannotBeReadWholeIsEmpty) {
    access->SetPrinterPropertyBagStreamBuffer(key, Bytes("value"));
    using Trouble = FakePropertyStream::Trouble;
    for (const Trouble trouble : {Trouble::Stat, Trouble::Read, Trouble::ShortRead, Trouble::HugeSize}) {
        bag->streamTrouble = trouble;
        bytes = Bytes("old");
        access->GetPrinterPropertyBagStreamBuffer(key, bytes);
        EXPECT_TRUE(bytes.empty()) << static_cast<int>(trouble);
        CPString narrow("old");
        access->GetPrinterPropertyBagStreamAsCPString(key, narrow);
        EXPECT_TRUE(narrow.isEmpty()) << static_cast<int>(trouble);
    }
}

TEST_F(NativeComPrinterPropertyBagAccessTest, NoFailureOfTheBagPassesWithoutAWord) {
    using Access = NativeComPrinterPropertyBagAccess;
    struct World {
        World() {
            OvPlatform::QueuePropertyBag::Create({}, OvPlatform::QueuePropertyBag::Access::ReadWrite, &bag);
            access = std::make_unique<Access>(*bag.p, Access::AssertionPolicyBagIsHeldElsewhere);
            Set(7, "old and long");
        }
        void Set(int number, const std::string& text) const {
            access->SetPrinterPropertyBagInteger(L"number", number);
            access->SetPrinterPropertyBagString(L"text", text.c_str());
            access->SetPrinterPropertyBagBytes(L"bytes", Bytes(text));
            access->SetPrinterPropertyBagStreamBuffer(L"stream", Bytes(text));
        }
        [[nodiscard]] std::string State() const {
            CXString text;
            CPString narrow;
            ByteBuffer buffer;
            access->GetPrinterPropertyBagString(L"text", text);
            access->GetPrinterPropertyBagStreamAsCPString(L"stream", narrow);
            access->GetPrinterPropertyBagBytes(L"bytes", buffer);
            return std::to_string(access->GetPrinterPropertyBagInteger(L"number")) + "|" +
                   std::string(CPString(text).view()) + "|" + std::string(narrow.view()) + "|" + Text(buffer);
        }

        CComPtr<IPrinterPropertyBag> bag;
        std::unique_ptr<IPrinterPropertyBagAccess> access;
    };
    const auto edit = [](const std::function<void(IPrinterPropertyBagAccess&)>& change) {
        return [change](World& world) {
            change(*world.access);
            return SweptAnswer();
        };
    };
    const Rows<const char*, FailureSweep<World>::Operation> operations{
        {"reading", [](World& world) { return SweptAnswer(world.State()); }},
        {"a number", edit([](auto& access) { access.SetPrinterPropertyBagInteger(L"number", 8); })},
        {"a text", edit([](auto& access) { access.SetPrinterPropertyBagString(L"text", L"new"); })},
        {"bytes", edit([](auto& access) { access.SetPrinterPropertyBagBytes(L"bytes", Bytes("new")); })},
        {"a stream",
         edit([](auto& access) { access.SetPrinterPropertyBagStreamBuffer(L"stream", Bytes("new")); })},
    };
    for (const auto& [name, operation] : operations)
        FailureSweep<World>([] { return std::make_unique<World>(); }, operation).Run(name);
}

TEST_F(NativeComPrinterPropertyBagAccessTest, KeepsItsSlots) {
    using Access = NativeComPrinterPropertyBagAccess;
    // Behind the destructor and the private question.
    const std::size_t slots[] = {
        SlotOf(&Access::GetPrinterPropertyBagBool),
        SlotOf(&Access::GetPrinterPropertyBagInteger),
        SlotOf(&Access::GetPrinterPropertyBagString),
        SlotOf(&Access::GetPrinterPropertyBagBytes),
        SlotOf(&Access::GetPrinterPropertyBagStreamBuffer),
        SlotOf(&Access::GetPrinterPropertyBagStreamAsCPString),
        SlotOf(&Access::GetPrinterPropertyBagCompressedStreamBuffer),
        SlotOf(&Access::SetPrinterPropertyBagBool),
        SlotOf(&Access::SetPrinterPropertyBagInteger),
        SlotOf(&Access::SetPrinterPropertyBagString),
        SlotOf(&Access::SetPrinterPropertyBagBytes),
        SlotOf(&Access::SetPrinterPropertyBagStreamBuffer),
    };
    for (std::size_t i = 0; i < std::size(slots); ++i)
        EXPECT_EQ(slots[i], i + 3);
}

} // namespace
