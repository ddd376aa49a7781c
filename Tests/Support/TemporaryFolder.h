#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

/// A folder of its own for a test, gone at its end.
class TemporaryFolder {
public:
    TemporaryFolder() {
        std::random_device random;
        do {
            m_path = std::filesystem::temp_directory_path() / ("ov-test-" + std::to_string(random()));
        } while (!std::filesystem::create_directory(m_path)); // until the name is new
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }

    const std::filesystem::path& Path() const { return m_path; }
    std::filesystem::path operator/(const std::string& name) const { return m_path / name; }

    std::filesystem::path Write(const std::string& name, const std::string& bytes) const {
        std::filesystem::create_directories((m_path / name).parent_path());
        std::ofstream(m_path / name, std::ios::binary) << bytes;
        return m_path / name;
    }

    static std::string Read(const std::filesystem::path& file) {
        std::ifstream stream(file, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    /// The names of what lies in the folder.
    std::vector<std::string> Names() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(m_path))
            names.push_back(entry.path().filename().string());
        return names;
    }

private:
    std::filesystem::path m_path;
};
