#pragma once

#include "ObjectModel/FontObfuscation.h"
#include "Package/PackageReader.h"

#include <objidl.h>

#include <memory>
#include <string>

namespace OvPlatform {

/// The bytes of a part wherever they lie, read anew by each that opens them. They do not change.
class PartContent {
public:
    virtual ~PartContent() = default;
    /// Throws PackageError.
    virtual std::unique_ptr<PackagePartStream> Open() const = 0;
};
using SharedContent = std::shared_ptr<const PartContent>;

/// What lies in a package.
SharedContent StoredContent(std::shared_ptr<const PackageReader> package, std::string partName);

/// What a caller gave: all of the stream, wherever it stands, which is kept and read when it is needed.
SharedContent CallerContent(IStream* stream);

/// Content whose first bytes are mixed with the key.
SharedContent MaskedContent(SharedContent content, const ObfuscationKey& key);

/// The markup of a part, as a whole. Throws PackageError, also for more than documents may have.
std::string ReadMarkup(const PartContent& content, const std::string& partName);

/// A read-only stream over the content, at its start.
HRESULT OpenContentStream(const SharedContent& content, IStream** stream);

} // namespace OvPlatform
