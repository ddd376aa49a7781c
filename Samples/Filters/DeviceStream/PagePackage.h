#pragma once

#include "MemoryFile.h"
#include "StoredArchive.h"

#include <filterpipeline.h>

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

/// The bytes of fonts and pictures, which pages of a job share: what one page has read the next need not read
/// again. Keeps no more than a bounded amount.
class ResourceBytes {
public:
    /// Of the part under that name. Throws CPComException for one that cannot be read, and CPException for a
    /// dictionary whose paths the renderer must not be given (PathData.h).
    std::shared_ptr<const CheckedBytes> Of(const std::string& name, IPartBase& part);

private:
    std::map<std::string, std::shared_ptr<const CheckedBytes>> m_kept;
    std::size_t m_size = 0;
};

/// One page of a job as an XPS package of its own, for libgxps, which reads packages: the page under its
/// name, and what it uses under theirs, so that its references lead where they did.
class PagePackage {
public:
    /// Throws CPComException for a page or a part that cannot be read, and CPException as ResourceBytes does.
    PagePackage(IFixedPage& page, ResourceBytes& resources);

    /// As a zip archive, in the place of what the file holds. Throws CPException where it cannot be made.
    void Write(MemoryFile& file) const;

private:
    void Add(const std::string& name, std::string content);
    void AddStructure(const std::string& pageName);

    std::vector<std::pair<std::string, std::shared_ptr<const CheckedBytes>>> m_parts; // by name, without "/"
};
