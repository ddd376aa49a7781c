#include "Support/ComFake.h"

#include <atlcomcli.h>
#include <gtest/gtest.h>

#include <utility>

namespace {

class Subject : public ComFake<ISequentialStream> {
public:
    HRESULT STDMETHODCALLTYPE Read(void*, ULONG, ULONG*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Write(const void*, ULONG, ULONG*) override { return E_NOTIMPL; }
};

TEST(ComPointer, CountsOnceForEachOwnerAndAsksForTheInterfaceWhenTheKindsDiffer) {
    const auto subject = MakeFake<Subject>();
    {
        CComPtr<IUnknown> first(subject.p), second(first);
        EXPECT_EQ(3u, subject->References());
        const CComPtr<IUnknown> moved(std::move(second));
        EXPECT_FALSE(second);
        first = moved;
        const auto& alias = first;
        first = alias;
        first = std::move(const_cast<CComPtr<IUnknown>&>(alias));
        EXPECT_EQ(3u, subject->References()) << "assigned to itself";
        first.Attach(first.Detach());
        EXPECT_EQ(3u, subject->References());

        CComPtr<ISequentialStream> stream;
        stream = first;
        EXPECT_EQ(4u, subject->References());
        EXPECT_TRUE(first.IsEqualObject(stream));
        CComPtr<IDispatch> missing;
        missing = first;
        EXPECT_FALSE(missing);
        EXPECT_FALSE(CComQIPtr<IDispatch>(first.p));
        first = nullptr;
        EXPECT_EQ(S_OK, moved.CopyTo(&first));
        EXPECT_EQ(4u, subject->References());
    }
    EXPECT_EQ(1u, subject->References());
}

} // namespace
