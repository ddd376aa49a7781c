#pragma once

#include "Support/SampleJob.h"
#include "Support/TemporaryFolder.h"

#include <cairo.h>

#include <stdexcept>
#include <string>
#include <vector>

/// A job whose pages can be drawn: paths, a gradient, a picture, and text in an obfuscated font.
struct DrawnJob {
    struct Page {
        int width = 794; // XPS units
        int height = 1123;
        std::string ticket = {};
    };
    std::vector<Page> pages = {{}, {.width = 1123, .height = 794}, {.width = 559, .height = 794}};

    std::string jobTicket = {};

    ZipItems Items() const {
        SampleJob job;
        job.jobTicket = jobTicket;
        job.pages = static_cast<int>(pages.size());
        job.hasExtras = false;
        ZipItems items = job.Items();
        items[std::string(SampleJob::fontName).substr(1)] = ObfuscatedFont();
        items["Resources/Picture.png"] = Picture();
        for (std::size_t i = 0; i < pages.size(); ++i) {
            const std::string number = std::to_string(i + 1);
            const std::string folder = "Documents/1/Pages/";
            items[folder + number + ".fpage"] = Markup(pages[i], number, job.Base());
            if (pages[i].ticket.empty()) continue;
            const std::string ticket = "Metadata/Page" + number + "_PT.xml";
            items[ticket] = pages[i].ticket;
            std::string& links =
                items[std::string(folder).append("_rels/").append(number).append(".fpage.rels")];
            links.replace(links.rfind("</"), std::string::npos,
                          "<Relationship Id=\"Ticket\" Type=\"" + job.Base() + "/printticket\" Target=\"/" +
                              ticket + "\"/></Relationships>");
        }
        return items;
    }
    void Write(const std::filesystem::path& file) const { WriteZip(file, Items()); }

private:
    static std::string Markup(const Page& page, const std::string& number, const std::string& base) {
        return "<FixedPage xmlns=\"" + base + "\" xml:lang=\"en\" Width=\"" + std::to_string(page.width) +
               "\" Height=\"" + std::to_string(page.height) + "\">" + R"(
            <Path Fill="#FF3366CC" Data="M 60,300 L 300,300 300,420 60,420 z"/>
            <Path Stroke="#FFCC3333" StrokeThickness="6" Data="M 320,300 C 420,200 420,520 520,420"/>
            <Path Data="M 60,460 L 500,460 500,500 60,500 z"><Path.Fill>
              <LinearGradientBrush MappingMode="Absolute" StartPoint="60,0" EndPoint="500,0">
                <LinearGradientBrush.GradientStops><GradientStop Color="#FF00FF00" Offset="0"/>
                <GradientStop Color="#FF000000" Offset="1"/></LinearGradientBrush.GradientStops>
              </LinearGradientBrush></Path.Fill></Path>
            <Path Data="M 60,540 L 260,540 260,640 60,640 z"><Path.Fill>
              <ImageBrush ImageSource="/Resources/Picture.png" Viewbox="0,0,200,100" ViewboxUnits="Absolute"
                          Viewport="60,540,200,100" ViewportUnits="Absolute"/></Path.Fill></Path>
            <Glyphs Fill="#FF000000" FontUri=")" +
               SampleJob::fontName +
               R"(" FontRenderingEmSize="64" OriginX="60" OriginY="200" UnicodeString="Page )" + number +
               R"("/>
            <Path Fill="#FF000000" Data="M 0,0 L 30,0 0,30 z"/></FixedPage>)";
    }

    static std::string ObfuscatedFont() {
        std::string font =
            TemporaryFolder::Read("/usr/share/fonts/opentype/urw-base35/NimbusSans-Regular.otf");
        if (font.size() < 32) throw std::runtime_error("the font Nimbus Sans is missing (fonts-urw-base35)");
        for (std::size_t i = 0; i < 32; ++i)
            font[i] = static_cast<char>(font[i] ^ (15 - i % 16));
        return font;
    }

    // Four colors, two by two, a pixel of it for each of the page.
    static std::string Picture() {
        cairo_surface_t* const surface = cairo_image_surface_create(CAIRO_FORMAT_RGB24, 200, 100);
        cairo_t* const context = cairo_create(surface);
        const double colors[4][3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {1, 1, 0}};
        for (int i = 0; i < 4; ++i) {
            cairo_set_source_rgb(context, colors[i][0], colors[i][1], colors[i][2]);
            cairo_rectangle(context, i % 2 == 0 ? 0 : 100, i < 2 ? 0 : 50, 100, 50);
            cairo_fill(context);
        }
        cairo_destroy(context);
        std::string bytes;
        cairo_surface_write_to_png_stream(
            surface,
            [](void* closure, const unsigned char* piece, unsigned int count) {
                static_cast<std::string*>(closure)->append(reinterpret_cast<const char*>(piece), count);
                return CAIRO_STATUS_SUCCESS;
            },
            &bytes);
        cairo_surface_destroy(surface);
        return bytes;
    }
};
