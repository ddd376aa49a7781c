// The renderer on libgxps and cairo.
#include "PagePackage.h"
#include "PageRenderer.h"

#include <LowLevelFacilities/Failures/ThrowFailure.h>
#include <libgxps/gxps.h>

#include <cairo-ps.h>
#include <sys/mman.h>
#include <unistd.h>

#include <exception>
#include <string>

namespace {

constexpr double pointsPerUnit = 72.0 / 96.0; // XPS counts 96 to the inch

template <class Object>
struct Unreference {
    void operator()(Object* object) const { g_object_unref(object); }
};
template <class Object>
using Reference = std::unique_ptr<Object, Unreference<Object>>;

// What GLib says of a failure.
class Words {
public:
    Words() = default;
    Words(const Words&) = delete;
    Words& operator=(const Words&) = delete;
    ~Words() { g_clear_error(&m_error); }

    GError** Out() {
        g_clear_error(&m_error);
        return &m_error;
    }
    [[noreturn]] void Throw(const char* what) const {
        ThrowFailure<CPException>([&] {
            return std::string(what) + (m_error != nullptr ? std::string(": ") + m_error->message : "");
        });
    }

private:
    GError* m_error = nullptr;
};

// A file without a name, which lives in memory, for a library that reads files by their names.
class MemoryFile {
public:
    explicit MemoryFile(std::string_view bytes) : m_descriptor(memfd_create("page", MFD_CLOEXEC)) {
        std::size_t written = 0;
        while (m_descriptor >= 0 && written < bytes.size()) {
            const ssize_t count = write(m_descriptor, bytes.data() + written, bytes.size() - written);
            if (count <= 0) break;
            written += static_cast<std::size_t>(count);
        }
        if (written < bytes.size() || m_descriptor < 0) {
            if (m_descriptor >= 0) close(m_descriptor);
            ThrowFailure<CPException>([] { return "there is no memory for the package of a page"; });
        }
    }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;
    ~MemoryFile() { close(m_descriptor); }

    std::string Path() const { return "/proc/self/fd/" + std::to_string(m_descriptor); }

private:
    int m_descriptor;
};

// Where cairo writes the page. It does so while its surface is finished, which happens also to one that is
// given up.
struct Receiver {
    const PageRenderer::Write& write;
    bool isGivenUp = false;
    std::exception_ptr failure = {};
};

cairo_status_t Receive(void* closure, const unsigned char* bytes, unsigned int count) noexcept {
    auto& receiver = *static_cast<Receiver*>(closure);
    if (receiver.isGivenUp) return CAIRO_STATUS_WRITE_ERROR;
    try {
        receiver.write({reinterpret_cast<const char*>(bytes), count});
        return CAIRO_STATUS_SUCCESS;
    } catch (...) {
        receiver.failure = std::current_exception();
        receiver.isGivenUp = true;
        return CAIRO_STATUS_WRITE_ERROR;
    }
}

// A page of encapsulated PostScript, as cairo draws it.
class Drawing {
public:
    Drawing(Receiver& receiver, const PageRenderer::PageSize& size)
        : m_receiver(receiver),
          m_surface(cairo_ps_surface_create_for_stream(Receive, &receiver, size.width, size.height)) {
        cairo_ps_surface_set_eps(m_surface, 1);
        m_context = cairo_create(m_surface);
        cairo_scale(m_context, pointsPerUnit, pointsPerUnit);
    }
    Drawing(const Drawing&) = delete;
    Drawing& operator=(const Drawing&) = delete;
    ~Drawing() {
        m_receiver.isGivenUp = true; // unless it is finished
        cairo_destroy(m_context);
        cairo_surface_destroy(m_surface);
    }

    cairo_t* Context() const { return m_context; }

    void Finish() {
        cairo_show_page(m_context);
        cairo_surface_finish(m_surface);
        if (m_receiver.failure) std::rethrow_exception(m_receiver.failure);
        const cairo_status_t status = cairo_surface_status(m_surface);
        if (status != CAIRO_STATUS_SUCCESS)
            ThrowFailure<CPException>(
                [&] { return std::string("the page cannot be imaged: ") + cairo_status_to_string(status); });
    }

private:
    Receiver& m_receiver;
    cairo_surface_t* m_surface;
    cairo_t* m_context = nullptr;
};

class GxpsPageRenderer final : public PageRenderer {
public:
    PageSize Open(IFixedPage& page) override {
        Close();
        m_file = std::make_unique<MemoryFile>(PagePackage(page, m_resources).Archive());
        const Reference<GFile> file(g_file_new_for_path(m_file->Path().c_str()));
        Words words;
        const Reference<GXPSFile> package(gxps_file_new(file.get(), words.Out()));
        if (!package) words.Throw("the page cannot be read");
        const Reference<GXPSDocument> document(gxps_file_get_document(package.get(), 0, words.Out()));
        if (!document) words.Throw("the page cannot be read");
        m_page.reset(gxps_document_get_page(document.get(), 0, words.Out()));
        if (!m_page) words.Throw("the page cannot be read");
        double width = 0;
        double height = 0;
        gxps_page_get_size(m_page.get(), &width, &height);
        m_size = {width * pointsPerUnit, height * pointsPerUnit};
        return m_size;
    }

    void Image(const Write& write) override {
        Receiver receiver{write};
        Drawing drawing(receiver, m_size);
        Words words;
        if (!gxps_page_render(m_page.get(), drawing.Context(), words.Out()))
            words.Throw("the page cannot be imaged");
        drawing.Finish();
        Close();
    }

private:
    void Close() {
        m_page.reset();
        m_file.reset();
    }

    ResourceBytes m_resources;
    std::unique_ptr<MemoryFile> m_file;
    Reference<GXPSPage> m_page;
    PageSize m_size;
};

} // namespace

std::unique_ptr<PageRenderer> MakePageRenderer() { return std::make_unique<GxpsPageRenderer>(); }
