#include <atlcomcli.h>
#include <gtest/gtest.h>

#include <utility>

namespace {

/// Two interfaces on one object that lives on the stack and counts its references.
class Subject : public ISequentialStream, public IPersist {
public:
    virtual ~Subject() = default;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
        *object = nullptr;
        if (iid == __uuidof(IUnknown) || iid == __uuidof(ISequentialStream))
            *object = static_cast<ISequentialStream*>(this);
        if (iid == __uuidof(IPersist)) *object = static_cast<IPersist*>(this);
        if (*object == nullptr) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references; }
    ULONG STDMETHODCALLTYPE Release() override { return --references; }
    HRESULT STDMETHODCALLTYPE GetClassID(CLSID*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Read(void*, ULONG, ULONG*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Write(const void*, ULONG, ULONG*) override { return E_NOTIMPL; }

    ULONG references = 0;
};

TEST(ComPointer, CountsOnceForEachOwner) {
    Subject subject;
    {
        CComPtr<ISequentialStream> first(&subject);
        CComPtr<ISequentialStream> second(first);
        EXPECT_EQ(2u, subject.references);
        CComPtr<ISequentialStream> moved(std::move(second));
        EXPECT_EQ(2u, subject.references);
        EXPECT_FALSE(second);
        first = moved;
        EXPECT_EQ(2u, subject.references);
        const auto& alias = first;
        first = alias;
        first = std::move(const_cast<CComPtr<ISequentialStream>&>(alias));
        EXPECT_EQ(2u, subject.references) << "assigned to itself";
        moved.Release();
        EXPECT_EQ(1u, subject.references);

        ISequentialStream* detached = first.Detach();
        EXPECT_EQ(1u, subject.references);
        first.Attach(detached);
        EXPECT_EQ(1u, subject.references);
        CComPtr<ISequentialStream> copied;
        EXPECT_EQ(S_OK, first.CopyTo(&copied));
        EXPECT_EQ(2u, subject.references);
        first = nullptr;
        EXPECT_EQ(1u, subject.references);
    }
    EXPECT_EQ(0u, subject.references);
}

TEST(ComPointer, AsksForTheInterfaceWhenTheKindsDiffer) {
    Subject subject;
    CComPtr<ISequentialStream> stream(&subject);
    CComPtr<IPersist> persist;
    persist = stream;
    EXPECT_EQ(static_cast<IPersist*>(&subject), persist.p);
    EXPECT_EQ(2u, subject.references);
    EXPECT_TRUE(stream.IsEqualObject(persist));
    EXPECT_EQ(2u, subject.references);

    CComPtr<IDispatch> missing;
    missing = stream;
    EXPECT_EQ(nullptr, missing.p);
    EXPECT_EQ(nullptr, CComQIPtr<IDispatch>(stream.p).p);
    EXPECT_EQ(2u, subject.references);
}

} // namespace
