#pragma once

#include "Streams/ByteReader.h"

namespace OvPipeline {

/// The bytes of a part of the job's package.
class PackageContent final : public Content {
public:
    PackageContent(std::shared_ptr<const OvPlatform::PackageReader> package,
                   const OvPlatform::PackagePart& part)
        : m_package(std::move(package)), m_part(part) {}

    std::unique_ptr<ByteReader> Open() const override;
    std::unique_ptr<OvPlatform::PackedPartStream> OpenPacked() const override {
        return m_package->OpenPacked(m_part.name);
    }
    std::uint64_t Identity() const override;

private:
    std::shared_ptr<const OvPlatform::PackageReader> m_package;
    const OvPlatform::PackagePart& m_part;
};

} // namespace OvPipeline
