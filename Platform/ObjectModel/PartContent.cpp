#include "ObjectModel/PartContent.h"

#include "Com/CountedObject.h"
#include "ObjectModel/ModelCall.h"
#include "Xml/DocumentBound.h"

#include <atlcomcli.h>
#include <msopc.h>
#include <streambase.h>
#include <xpsobjectmodel.h>

#include <limits>
#include <mutex>
#include <utility>

namespace OvPlatform {

namespace {

class Stored final : public PartContent {
public:
    Stored(std::shared_ptr<const PackageReader> package, std::string part)
        : m_package(std::move(package)), m_part(std::move(part)) {}
    std::unique_ptr<PackagePartStream> Open() const override { return m_package->OpenPart(m_part); }

private:
    std::shared_ptr<const PackageReader> m_package;
    std::string m_part;
};

// A caller's stream, of which all readings share the one place.
struct SharedStream {
    CComPtr<IStream> stream;
    std::mutex lock;
};

void RequireRead(HRESULT result) { Require(result, "a stream", "it cannot be read"); }

class CallerReading final : public PackagePartStream {
public:
    explicit CallerReading(std::shared_ptr<SharedStream> shared) : m_shared(std::move(shared)) {
        const std::lock_guard guard(m_shared->lock);
        ULARGE_INTEGER size{};
        RequireRead(m_shared->stream->Seek(LARGE_INTEGER{}, STREAM_SEEK_END, &size));
        m_size = size.QuadPart;
    }

    std::size_t Read(void* buffer, std::size_t size) override {
        if (m_position >= m_size) return 0;
        size = static_cast<std::size_t>((std::min)(
            {std::uint64_t{size}, m_size - m_position, std::uint64_t{(std::numeric_limits<ULONG>::max)()}}));
        const std::lock_guard guard(m_shared->lock);
        LARGE_INTEGER place;
        place.QuadPart = static_cast<LONGLONG>(m_position);
        RequireRead(m_shared->stream->Seek(place, STREAM_SEEK_SET, nullptr));
        ULONG got = 0;
        RequireRead(m_shared->stream->Read(buffer, static_cast<ULONG>(size), &got));
        if (got == 0 || got > size)
            throw PackageError(XPS_E_MISSING_PART_STREAM, "a stream", "it gives another size than it says");
        m_position += got;
        return got;
    }
    void Seek(std::uint64_t position) override { m_position = position; }
    std::uint64_t Position() const override { return m_position; }
    std::uint64_t Size() const override { return m_size; }

private:
    std::shared_ptr<SharedStream> m_shared;
    std::uint64_t m_size = 0;
    std::uint64_t m_position = 0;
};

class Caller final : public PartContent {
public:
    explicit Caller(IStream* stream) : m_shared(std::make_shared<SharedStream>()) {
        m_shared->stream = stream;
    }
    std::unique_ptr<PackagePartStream> Open() const override {
        return std::make_unique<CallerReading>(m_shared);
    }

private:
    std::shared_ptr<SharedStream> m_shared;
};

class MaskedReading final : public PackagePartStream {
public:
    MaskedReading(std::unique_ptr<PackagePartStream> bytes, const ObfuscationKey& key)
        : m_bytes(std::move(bytes)), m_key(key) {}

    std::size_t Read(void* buffer, std::size_t size) override {
        const std::uint64_t position = m_bytes->Position();
        const std::size_t got = m_bytes->Read(buffer, size);
        Obfuscate(m_key, position, buffer, got);
        return got;
    }
    void Seek(std::uint64_t position) override { m_bytes->Seek(position); }
    std::uint64_t Position() const override { return m_bytes->Position(); }
    std::uint64_t Size() const override { return m_bytes->Size(); }

private:
    std::unique_ptr<PackagePartStream> m_bytes;
    ObfuscationKey m_key;
};

class Masked final : public PartContent {
public:
    Masked(SharedContent content, const ObfuscationKey& key) : m_content(std::move(content)), m_key(key) {}
    std::unique_ptr<PackagePartStream> Open() const override {
        return std::make_unique<MaskedReading>(m_content->Open(), m_key);
    }

private:
    SharedContent m_content;
    ObfuscationKey m_key;
};

class ContentStream final : public StreamBase<FaultEntry> {
public:
    ContentStream(SharedContent content, std::unique_ptr<PackagePartStream> bytes, std::size_t position)
        : StreamBase(STGM_READ, position), m_content(std::move(content)), m_bytes(std::move(bytes)) {}

    HRESULT STDMETHODCALLTYPE Read(void* buffer, ULONG count, ULONG* got) override {
        if (got != nullptr) *got = 0;
        if (buffer == nullptr) return STG_E_INVALIDPOINTER;
        return ModelCall([&] {
            if (m_position >= m_bytes->Size()) return S_OK;
            if (m_bytes->Position() != m_position) m_bytes->Seek(m_position);
            ULONG done = 0;
            while (done < count) {
                const std::size_t step = m_bytes->Read(static_cast<char*>(buffer) + done, count - done);
                if (step == 0) break;
                done += static_cast<ULONG>(step);
            }
            m_position += done;
            if (got != nullptr) *got = done;
            return S_OK;
        });
    }
    HRESULT STDMETHODCALLTYPE Clone(IStream** stream) override {
        if (stream == nullptr) return STG_E_INVALIDPOINTER;
        return ModelCall(stream, [&] {
            *stream = new ContentStream(m_content, m_content->Open(), m_position);
            return S_OK;
        });
    }

private:
    HRESULT Size(std::size_t& size) override {
        size = static_cast<std::size_t>(m_bytes->Size());
        return S_OK;
    }

    SharedContent m_content;
    std::unique_ptr<PackagePartStream> m_bytes;
};

} // namespace

SharedContent StoredContent(std::shared_ptr<const PackageReader> package, std::string partName) {
    return std::make_shared<Stored>(std::move(package), std::move(partName));
}

SharedContent CallerContent(IStream* stream) { return std::make_shared<Caller>(stream); }

SharedContent MaskedContent(SharedContent content, const ObfuscationKey& key) {
    return std::make_shared<Masked>(std::move(content), key);
}

std::string ReadMarkup(const PartContent& content, const std::string& partName) {
    const auto bytes = content.Open();
    if (bytes->Size() > mostDocumentBytes)
        throw PackageError(OPC_E_UNSUPPORTED_PACKAGE, partName, "its markup is too large");
    std::string text(static_cast<std::size_t>(bytes->Size()), '\0');
    std::size_t done = 0;
    while (const std::size_t got = bytes->Read(text.data() + done, text.size() - done))
        done += got;
    text.resize(done);
    return text;
}

HRESULT OpenContentStream(const SharedContent& content, IStream** stream) {
    return ModelCall(stream, [&] {
        if (!content) return XPS_E_MISSING_PART_STREAM;
        *stream = new ContentStream(content, content->Open(), 0);
        return S_OK;
    });
}

} // namespace OvPlatform
