#pragma once

#include <libgxps/gxps.h>

#include <cairo.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

/// A page as pixels, 96 to the inch, that are compared by squares: what is left of two drawings of one page
/// when edges fall differently between pixels.
class PageImageData {
public:
    PageImageData(int width, int height)
        : m_width(width), m_height(height), m_pixels(std::size_t(3) * width * height) {}

    int Width() const { return m_width; }
    int Height() const { return m_height; }
    std::uint8_t* Pixel(int x, int y) { return &m_pixels[std::size_t(3) * (std::size_t(m_width) * y + x)]; }
    const std::uint8_t* Pixel(int x, int y) const { return const_cast<PageImageData*>(this)->Pixel(x, y); }

    /// The greatest difference of the mean of a color in any square, of 255. Sizes may differ by a pixel.
    double GreatestDifference(const PageImageData& other) const {
        if (std::abs(m_width - other.m_width) > 1 || std::abs(m_height - other.m_height) > 1) return 255;
        double greatest = 0;
        for (int y = 0; y + square <= std::min(m_height, other.m_height); y += square)
            for (int x = 0; x + square <= std::min(m_width, other.m_width); x += square)
                for (int color = 0; color < 3; ++color)
                    greatest = std::max(greatest, std::abs(Mean(x, y, color) - other.Mean(x, y, color)));
        return greatest;
    }

private:
    static constexpr int square = 12;

    double Mean(int left, int top, int color) const {
        double sum = 0;
        for (int y = top; y < top + square; ++y)
            for (int x = left; x < left + square; ++x)
                sum += Pixel(x, y)[color];
        return sum / (square * square);
    }

    int m_width;
    int m_height;
    std::vector<std::uint8_t> m_pixels;
};

/// The pages of a job as the renderer itself draws them.
inline std::vector<PageImageData> RendererImages(const std::filesystem::path& job) {
    std::vector<PageImageData> images;
    GFile* const file = g_file_new_for_path(job.c_str());
    GError* error = nullptr;
    GXPSFile* const package = gxps_file_new(file, &error);
    GXPSDocument* const document = package != nullptr ? gxps_file_get_document(package, 0, &error) : nullptr;
    for (guint number = 0; document != nullptr && number < gxps_document_get_n_pages(document); ++number) {
        GXPSPage* const page = gxps_document_get_page(document, number, &error);
        if (page == nullptr) break;
        double width = 0;
        double height = 0;
        gxps_page_get_size(page, &width, &height);
        PageImageData image(static_cast<int>(width), static_cast<int>(height));
        cairo_surface_t* const surface =
            cairo_image_surface_create(CAIRO_FORMAT_RGB24, image.Width(), image.Height());
        cairo_t* const context = cairo_create(surface);
        cairo_set_source_rgb(context, 1, 1, 1);
        cairo_paint(context);
        const bool isDrawn = gxps_page_render(page, context, &error);
        cairo_surface_flush(surface);
        for (int y = 0; y < image.Height(); ++y)
            for (int x = 0; x < image.Width(); ++x) {
                const auto* const row = reinterpret_cast<const std::uint32_t*>(
                    cairo_image_surface_get_data(surface) +
                    std::ptrdiff_t(y) * cairo_image_surface_get_stride(surface));
                for (int color = 0; color < 3; ++color)
                    image.Pixel(x, y)[color] = static_cast<std::uint8_t>(row[x] >> (16 - 8 * color));
            }
        cairo_destroy(context);
        cairo_surface_destroy(surface);
        g_object_unref(page);
        if (isDrawn) images.push_back(std::move(image));
    }
    if (document != nullptr) g_object_unref(document);
    if (package != nullptr) g_object_unref(package);
    g_object_unref(file);
    if (error != nullptr) {
        const std::string words = error->message;
        g_error_free(error);
        throw std::runtime_error(words);
    }
    return images;
}

/// The pages of a PostScript file, imaged by Ghostscript into the folder.
inline std::vector<PageImageData> InterpreterImages(const std::filesystem::path& postScript,
                                                    const std::filesystem::path& folder) {
    const std::string command = "gs -q -dSAFER -dBATCH -dNOPAUSE -sDEVICE=ppmraw -r96 -dTextAlphaBits=4 "
                                "-dGraphicsAlphaBits=4 -sOutputFile=" +
                                (folder / "image-%d.ppm").string() + " " + postScript.string();
    if (std::system(command.c_str()) != 0) throw std::runtime_error("Ghostscript refuses the stream");
    std::vector<PageImageData> images;
    for (int number = 1;; ++number) {
        std::ifstream stream(folder / ("image-" + std::to_string(number) + ".ppm"), std::ios::binary);
        if (!stream) return images;
        std::string line;
        std::getline(stream, line); // P6
        do
            std::getline(stream, line);
        while (line.starts_with('#'));
        const std::size_t blank = line.find(' ');
        PageImageData image(std::stoi(line), std::stoi(line.substr(blank)));
        std::getline(stream, line); // 255
        stream.read(reinterpret_cast<char*>(image.Pixel(0, 0)),
                    std::streamsize(3) * image.Width() * image.Height());
        images.push_back(std::move(image));
    }
}
