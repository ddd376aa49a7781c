#pragma once

// XPS jobs for tests: built item by item, so that a test can damage what it likes before the package is
// written. The package is written by libzip, not by the system's own writer.

#include "Support/TemporaryFolder.h"

#include <zip.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

using ZipItems = std::map<std::string, std::string>; // by item name, "_rels/.rels"

inline void WriteZip(const std::filesystem::path& file, const ZipItems& items) {
    int error = 0;
    zip_t* archive = zip_open(file.c_str(), ZIP_CREATE | ZIP_TRUNCATE, &error);
    if (!archive) throw std::runtime_error("cannot write " + file.string());
    for (const auto& [name, bytes] : items) {
        zip_source_t* source = zip_source_buffer(archive, bytes.data(), bytes.size(), 0);
        if (zip_file_add(archive, name.c_str(), source, ZIP_FL_ENC_RAW) < 0)
            throw std::runtime_error("cannot add " + name);
    }
    if (zip_close(archive) != 0) throw std::runtime_error("cannot write " + file.string());
}

inline ZipItems ReadZip(const std::filesystem::path& file) {
    int error = 0;
    zip_t* archive = zip_open(file.c_str(), ZIP_RDONLY, &error);
    if (!archive) throw std::runtime_error("cannot read " + file.string());
    ZipItems items;
    for (zip_int64_t i = 0; i < zip_get_num_entries(archive, 0); ++i) {
        const auto index = static_cast<zip_uint64_t>(i);
        zip_stat_t stat{};
        zip_stat_index(archive, index, 0, &stat);
        std::string bytes(stat.size, '\0');
        zip_file_t* item = zip_fopen_index(archive, index, 0);
        if (!item || zip_fread(item, bytes.data(), stat.size) != static_cast<zip_int64_t>(stat.size))
            throw std::runtime_error(std::string("cannot read ") + stat.name);
        zip_fclose(item);
        items.emplace(stat.name, std::move(bytes));
    }
    zip_close(archive);
    return items;
}

/// A ticket with the one option of a feature, both in the published keywords' namespace.
inline std::string SampleTicket(const std::string& feature, const std::string& option) {
    return R"(<?xml version="1.0" encoding="UTF-8"?>
<psf:PrintTicket xmlns:psf="http://schemas.microsoft.com/windows/2003/08/printing/printschemaframework")"
           R"( xmlns:psk="http://schemas.microsoft.com/windows/2003/08/printing/printschemakeywords" version="1">)"
           R"(<psf:Feature name="psk:)" +
           feature + R"("><psf:Option name="psk:)" + option + R"("/></psf:Feature></psf:PrintTicket>)";
}

/// A job whose pages share a font, an image and a dictionary that uses a second image.
struct SampleJob {
    bool isOpenXps = false;
    int documents = 1;
    int pages = 2; // of each document
    std::string jobTicket;
    std::string documentTicket; // of every document, one part each
    std::string pageTicket;     // of every page; one part that they share
    std::size_t pageSize = 0;   // bytes that the markup is filled up with
    bool hasExtras = true;      // thumbnail, core properties, document structure, story fragments

    /// The obfuscated form of FontBytes under its name.
    static constexpr const char* fontName = "/Resources/00010203-0405-0607-0809-0A0B0C0D0E0F.odttf";
    static std::string FontBytes() { return std::string(32, '\0') + "the rest of the font is plain"; }
    static std::string StoredFontBytes() {
        std::string bytes = FontBytes();
        for (std::size_t i = 0; i < 32; ++i)
            bytes[i] = static_cast<char>(15 - i % 16);
        return bytes;
    }

    std::string Base() const {
        return isOpenXps ? "http://schemas.openxps.org/oxps/v1.0"
                         : "http://schemas.microsoft.com/xps/2005/06";
    }
    static std::string DocumentName(int document) {
        return "/Documents/" + std::to_string(document) + "/FixedDoc.fdoc";
    }
    static std::string PageName(int document, int page) {
        return "/Documents/" + std::to_string(document) + "/Pages/" + std::to_string(page) + ".fpage";
    }

    ZipItems Items() const {
        ZipItems items;
        const auto add = [&](const std::string& part, std::string bytes) {
            items[part.substr(1)] = std::move(bytes);
        };
        add("/[Content_Types].xml", ContentTypes());
        add("/Resources/Picture.png", "\x89PNG picture");
        add("/Resources/Pattern.jpg", "\xff\xd8 pattern");
        add("/Resources/Brushes.dict", "<ResourceDictionary xmlns=\"" + Base() + "\"/>");
        add(fontName, StoredFontBytes());
        items["Resources/_rels/Brushes.dict.rels"] =
            Relationships({{Base() + "/required-resource", "Pattern.jpg"}});

        Links root{{Base() + "/fixedrepresentation", "/FixedDocSeq.fdseq"}};
        if (hasExtras) {
            add("/docProps/core.xml", "<coreProperties/>");
            add("/docProps/thumb.jpeg", "\xff\xd8 thumbnail");
            root.push_back({package + "/metadata/core-properties", "docProps/core.xml"});
            root.push_back({package + "/metadata/thumbnail", "docProps/thumb.jpeg"});
        }
        items["_rels/.rels"] = Relationships(root);

        std::string sequence = "<FixedDocumentSequence xmlns=\"" + Base() + "\">";
        for (int document = 1; document <= documents; ++document) {
            sequence += "<DocumentReference Source=\"" + DocumentName(document).substr(1) + "\"/>";
            AddDocument(items, document);
        }
        add("/FixedDocSeq.fdseq", sequence + "</FixedDocumentSequence>");
        if (!jobTicket.empty()) {
            add("/Metadata/Job_PT.xml", jobTicket);
            items["_rels/FixedDocSeq.fdseq.rels"] =
                Relationships({{Base() + "/printticket", "Metadata/Job_PT.xml"}});
        }
        if (!pageTicket.empty()) add("/Metadata/Page_PT.xml", pageTicket);
        return items;
    }

    void Write(const std::filesystem::path& file) const { WriteZip(file, Items()); }

    using Links = std::vector<std::pair<std::string, std::string>>; // type and target
    static std::string Relationships(const Links& links) {
        std::string xml = "<Relationships xmlns=\"" + package + "\">";
        int id = 0;
        for (const auto& [type, target] : links)
            xml.append("<Relationship Id=\"R")
                .append(std::to_string(++id))
                .append("\" Type=\"")
                .append(type)
                .append("\" Target=\"")
                .append(target)
                .append("\"/>");
        return xml + "</Relationships>";
    }

    static inline const std::string package = "http://schemas.openxmlformats.org/package/2006/relationships";

private:
    void AddDocument(ZipItems& items, int document) const {
        const std::string folder = "Documents/" + std::to_string(document) + "/";
        std::string markup = "<FixedDocument xmlns=\"" + Base() + "\">";
        for (int page = 1; page <= pages; ++page) {
            markup += "<PageContent Source=\"Pages/" + std::to_string(page) +
                      ".fpage\" Width=\"816\" Height=\"1056\"/>";
            AddPage(items, folder, document, page);
        }
        items[folder + "FixedDoc.fdoc"] = markup + "</FixedDocument>";
        Links links;
        if (!documentTicket.empty()) {
            items[folder + "Metadata/Doc_PT.xml"] = documentTicket;
            links.push_back({Base() + "/printticket", "Metadata/Doc_PT.xml"});
        }
        if (hasExtras) {
            items[folder + "Structure.struct"] = "<DocumentStructure/>";
            links.push_back({Base() + "/documentstructure", "Structure.struct"});
        }
        links.push_back({Base() + "/restricted-font", fontName});
        items[folder + "_rels/FixedDoc.fdoc.rels"] = Relationships(links);
    }
    void AddPage(ZipItems& items, const std::string& folder, int document, int page) const {
        const std::string name = std::to_string(page) + ".fpage";
        items[folder + "Pages/" + name] = "<FixedPage xmlns=\"" + Base() +
                                          "\" Width=\"816\" Height=\"1056\"><!-- " +
                                          std::to_string(document) + "." + std::to_string(page) +
                                          std::string(pageSize, '.') + " --></FixedPage>";
        const std::string required = Base() + "/required-resource";
        Links links{{required, fontName},
                    {required, "../../../Resources/Picture.png"},
                    {required, "/Resources/Brushes.dict"}};
        if (!pageTicket.empty()) links.push_back({Base() + "/printticket", "/Metadata/Page_PT.xml"});
        if (hasExtras) {
            items[folder + "Pages/" + std::to_string(page) + ".frag"] = "<StoryFragments/>";
            links.push_back({Base() + "/storyfragments", std::to_string(page) + ".frag"});
        }
        items[folder + "Pages/_rels/" + name + ".rels"] = Relationships(links);
    }
    static std::string ContentTypes() {
        const std::map<std::string, std::string> types{
            {"rels", "application/vnd.openxmlformats-package.relationships+xml"},
            {"fdseq", "application/vnd.ms-package.xps-fixeddocumentsequence+xml"},
            {"fdoc", "application/vnd.ms-package.xps-fixeddocument+xml"},
            {"fpage", "application/vnd.ms-package.xps-fixedpage+xml"},
            {"dict", "application/vnd.ms-package.xps-resourcedictionary+xml"},
            {"struct", "application/vnd.ms-package.xps-documentstructure+xml"},
            {"frag", "application/vnd.ms-package.xps-storyfragments+xml"},
            {"odttf", "application/vnd.ms-package.obfuscated-opentype"},
            {"ttf", "application/vnd.ms-opentype"},
            {"png", "image/png"},
            {"jpg", "image/jpeg"},
            {"jpeg", "image/jpeg"},
            {"xml", "application/vnd.ms-printing.printticket+xml"}};
        std::string xml = "<Types xmlns=\"http://schemas.openxmlformats.org/package/2006/content-types\">";
        for (const auto& [extension, type] : types)
            xml.append("<Default Extension=\"")
                .append(extension)
                .append("\" ContentType=\"")
                .append(type)
                .append("\"/>");
        return xml + "<Override PartName=\"/docProps/core.xml\" "
                     "ContentType=\"application/vnd.openxmlformats-package.core-properties+xml\"/></Types>";
    }
};
