#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

/// A page as an outside reader draws it, 144 pixels to the inch: two to the point.
class DrawnPage {
public:
    static constexpr float pixelsPerUnit = 144.0F / 96; // of XPS units

    /// Pages count from 1. Each reader writes into the current folder.
    static DrawnPage ByMutool(const std::string& job, int page) {
        Do("mutool draw -q -r 144 -F ppm -o drawn.ppm " + job + " " + std::to_string(page));
        return DrawnPage("drawn.ppm");
    }
    static DrawnPage ByGxps(const std::string& job, int page) {
        const std::string number = std::to_string(page);
        Do("xpstopng -r 144 -f " + number + " -l " + number + " " + job + " drawn");
        for (const auto& file : std::filesystem::directory_iterator(".")) {
            const std::string name = file.path().filename().string();
            if (!name.starts_with("drawn-") || !name.ends_with(".png")) continue;
            Do("mutool draw -q -r 144 -F ppm -o drawn.ppm " + name); // which reads pictures too
            std::filesystem::remove(name);
            return DrawnPage("drawn.ppm");
        }
        throw std::runtime_error("xpstopng writes nothing");
    }

    /// Pixels, the far edges behind the last one; empty if left is not less than right.
    struct Box {
        float left, top, right, bottom;
        bool IsEmpty() const { return left >= right; }
    };

    /// Around all pixels that are not the same in both.
    Box DifferenceFrom(const DrawnPage& other) const {
        if (m_width != other.m_width || m_height != other.m_height)
            throw std::runtime_error("the pages are not of one size");
        Box box{float(m_width), float(m_height), 0, 0};
        for (int y = 0; y < m_height; ++y)
            for (int x = 0; x < m_width; ++x) {
                const std::size_t at = 3 * (std::size_t(m_width) * y + x);
                if (std::equal(&m_pixels[at], &m_pixels[at] + 3, &other.m_pixels[at])) continue;
                box = {std::min(box.left, float(x)), std::min(box.top, float(y)),
                       std::max(box.right, float(x + 1)), std::max(box.bottom, float(y + 1))};
            }
        return box;
    }

private:
    explicit DrawnPage(const std::string& file) {
        std::ifstream stream(file, std::ios::binary);
        std::string kind;
        int most = 0;
        stream >> kind >> m_width >> m_height >> most;
        stream.get();
        m_pixels.resize(std::size_t(3) * m_width * m_height);
        stream.read(reinterpret_cast<char*>(m_pixels.data()), std::streamsize(m_pixels.size()));
        if (!stream || kind != "P6") throw std::runtime_error("there is no drawing in " + file);
    }

    static void Do(const std::string& command) {
        if (std::system((command + " 2>reader.log").c_str()) != 0)
            throw std::runtime_error("fails: " + command);
    }

    int m_width = 0;
    int m_height = 0;
    std::vector<std::uint8_t> m_pixels;
};
