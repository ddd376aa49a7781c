// The renderer on libgxps and cairo.
#include "MemoryFile.h"
#include "PagePackage.h"
#include "PageRenderer.h"

#include <LowLevelFacilities/Failures/ThrowFailure.h>
#include <libgxps/gxps.h>

#include <cairo-ps.h>

#include <limits>
#include <string>
#include <utility>
#include <vector>

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

cairo_status_t Append(void* closure, const unsigned char* bytes, unsigned int count) noexcept {
    try {
        static_cast<std::string*>(closure)->append(reinterpret_cast<const char*>(bytes), count);
        return CAIRO_STATUS_SUCCESS;
    } catch (...) {
        return CAIRO_STATUS_NO_MEMORY;
    }
}

// A page of encapsulated PostScript, as cairo draws it.
class Drawing {
public:
    explicit Drawing(const PageSize& size)
        : m_surface(cairo_ps_surface_create_for_stream(Append, &m_postScript, size.width, size.height)) {
        cairo_ps_surface_set_eps(m_surface, 1);
        m_context = cairo_create(m_surface);
        cairo_scale(m_context, pointsPerUnit, pointsPerUnit);
    }
    Drawing(const Drawing&) = delete;
    Drawing& operator=(const Drawing&) = delete;
    ~Drawing() {
        cairo_destroy(m_context);
        cairo_surface_destroy(m_surface);
    }

    cairo_t* Context() const { return m_context; }

    std::string Finish() {
        cairo_show_page(m_context);
        cairo_surface_finish(m_surface);
        const cairo_status_t status = cairo_surface_status(m_surface);
        if (status != CAIRO_STATUS_SUCCESS)
            ThrowFailure<CPException>(
                [&] { return std::string("the page cannot be imaged: ") + cairo_status_to_string(status); });
        return std::move(m_postScript);
    }

private:
    std::string m_postScript; // before the surface, which writes to it when it goes
    cairo_surface_t* m_surface;
    cairo_t* m_context = nullptr;
};

// libgxps takes any number for a size. A device is told of its sheets in whole microns.
void CheckSize(const PageSize& size) {
    constexpr double most = std::numeric_limits<int>::max() / 25400.0 * 72.0;
    if (size.width <= most && size.height <= most) return;
    ThrowFailure<CPException>([] { return "the page is larger than any sheet can be"; });
}

class GxpsPage final : public ReadPage {
public:
    GxpsPage(const PagePackage& package, std::shared_ptr<MemoryFile> file) : m_file(std::move(file)) {
        package.Write(*m_file);
    }

    PageImage Image() const override {
        const Reference<GFile> file(g_file_new_for_path(m_file->Path().c_str()));
        Words words;
        const Reference<GXPSFile> job(gxps_file_new(file.get(), words.Out()));
        if (!job) words.Throw("the page cannot be read");
        const Reference<GXPSDocument> document(gxps_file_get_document(job.get(), 0, words.Out()));
        if (!document) words.Throw("the page cannot be read");
        const Reference<GXPSPage> page(gxps_document_get_page(document.get(), 0, words.Out()));
        if (!page) words.Throw("the page cannot be read");
        PageSize size;
        gxps_page_get_size(page.get(), &size.width, &size.height);
        size = {size.width * pointsPerUnit, size.height * pointsPerUnit};
        CheckSize(size);
        Drawing drawing(size);
        if (!gxps_page_render(page.get(), drawing.Context(), words.Out()))
            words.Throw("the page cannot be imaged");
        return {size, drawing.Finish()};
    }

private:
    std::shared_ptr<MemoryFile> m_file;
};

class GxpsPageRenderer final : public PageRenderer {
public:
    std::unique_ptr<ReadPage> Read(IFixedPage& page) override {
        return std::make_unique<GxpsPage>(PagePackage(page, m_resources), FreeFile());
    }

private:
    // Of a page that is gone, if there is one: its memory need not be had again.
    std::shared_ptr<MemoryFile> FreeFile() {
        for (const auto& file : m_files)
            if (file.use_count() == 1) return file;
        return m_files.emplace_back(std::make_shared<MemoryFile>());
    }

    ResourceBytes m_resources;
    std::vector<std::shared_ptr<MemoryFile>> m_files; // as many as there were pages at one time
};

} // namespace

std::unique_ptr<PageRenderer> MakePageRenderer() {
    // What it prints of a page on the error stream is told by the failure as well, or got over.
    g_log_set_handler(
        "GXPS", G_LOG_LEVEL_MASK, [](const gchar*, GLogLevelFlags, const gchar*, gpointer) {}, nullptr);
    return std::make_unique<GxpsPageRenderer>();
}
