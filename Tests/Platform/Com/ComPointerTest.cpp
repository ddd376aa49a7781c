#include "Support/ComFake.h"

#include <atlcomcli.h>
#include <gtest/gtest.h>

#include <utility>

namespace {

// Lives on the stack, and counts.
class Subject : public ComFake<ISequentialStream> {
public:
    ULONG references = 0;

    ULONG STDMETHODCALLTYPE AddRef() override { return ++references; }
    ULONG STDMETHODCALLTYPE Release() override { return --references; }
    HRESULT STDMETHODCALLTYPE Read(void*, ULONG, ULONG*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Write(const void*, ULONG, ULONG*) override { return E_NOTIMPL; }
};

TEST(ComPointer, CountsOnceForEachOwnerAndAsksForTheInterfaceWhenTheKindsDiffer) {
    Subject subject;
    {
        CComPtr<IUnknown> first(&subject), second(first);
        EXPECT_EQ(2u, subject.references);
        const CComPtr<IUnknown> moved(std::move(second));
        first = moved;
        const auto& alias = first;
        first = alias;
        first = std::move(const_cast<CComPtr<IUnknown>&>(alias));
        EXPECT_EQ(2u, subject.references) << "assigned to itself";
        first.Attach(first.Detach());
        EXPECT_EQ(2u, subject.references);

        CComPtr<ISequentialStream> stream;
        stream = first;
        EXPECT_EQ(3u, subject.references);
        EXPECT_TRUE(first.IsEqualObject(stream));
        CComPtr<IDispatch> missing;
        missing = first;
        EXPECT_FALSE(missing);
        EXPECT_FALSE(CComQIPtr<IDispatch>(first.p));
        first = nullptr;
        EXPECT_EQ(S_OK, moved.CopyTo(&first));
        EXPECT_EQ(3u, subject.references);
    }
    EXPECT_EQ(0u, subject.references);
}

} // namespace
