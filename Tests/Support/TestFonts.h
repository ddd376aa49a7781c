#pragma once

// The fonts that a test program finds on its system: those that it makes, and some packages whose fonts are
// on every machine that runs the tests. What else the machine has changes nothing.

#include "Support/TemporaryFolder.h"
#include "Support/TestFont.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <memory>
#include <string>

/// "Absent Face" is replaced by DejaVu Serif, whatever else there is not by DejaVu Sans.
///
/// To be added to the program's environments, since fonts are looked for once in a process.
class TestFonts : public testing::Environment {
public:
    /// Files by name.
    explicit TestFonts(std::map<std::string, std::string> files) : m_files(std::move(files)) {}

    void SetUp() override {
        m_folder = std::make_unique<TemporaryFolder>();
        for (const auto& [name, bytes] : m_files)
            m_folder->Write("fonts/" + name, bytes);
        std::string folders;
        for (const std::string& folder :
             {(*m_folder / "fonts").string(), std::string("/usr/share/fonts/truetype/dejavu"),
              std::string("/usr/share/fonts/truetype/droid"),
              std::string("/usr/share/fonts/opentype/urw-base35")})
            folders += "<dir>" + folder + "</dir>";
        const auto configuration = m_folder->Write(
            "fonts.conf", "<fontconfig>" + folders + "<cachedir>" + (*m_folder / "cache").string() +
                              "</cachedir><alias binding=\"same\"><family>Absent Face</family><accept>"
                              "<family>DejaVu Serif</family></accept></alias><match><edit name=\"family\" "
                              "mode=\"append_last\">"
                              "<string>DejaVu Sans</string></edit></match></fontconfig>");
        setenv("FONTCONFIG_FILE", configuration.c_str(), 1);
    }
    /// A file of the program's own.
    [[nodiscard]] std::filesystem::path operator/(const std::string& name) const {
        return *m_folder / ("fonts/" + name);
    }
    void TearDown() override { m_folder.reset(); }

private:
    std::map<std::string, std::string> m_files;
    std::unique_ptr<TemporaryFolder> m_folder;
};
