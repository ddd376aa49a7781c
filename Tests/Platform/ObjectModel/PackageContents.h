#pragma once

// What is in a package, in a form that two packages can be compared by.

#include <Package/PackageReader.h>

#include <filesystem>
#include <map>
#include <set>
#include <string>

struct PackageContents {
    std::map<std::string, std::string> parts; // type and bytes, by name
    std::set<std::string> relationships;      // source, id, type and target

    static PackageContents Of(const std::filesystem::path& file) {
        PackageContents contents;
        const auto reader = OvPlatform::PackageReader::Open(file);
        const auto addRelationships = [&](const std::string& source) {
            for (const auto& relationship : reader->Relationships(source)) {
                const auto* part = reader->Find(relationship.targetPart);
                contents.relationships.insert(source + " " + relationship.id + " " + relationship.type + " " +
                                              (part != nullptr ? part->name : relationship.target));
            }
        };
        addRelationships("/");
        for (const auto& part : reader->Parts()) {
            contents.parts[part.name] = part.contentType + "\n" + reader->ReadPart(part.name, part.size);
            addRelationships(part.name);
        }
        return contents;
    }

    bool operator==(const PackageContents&) const = default;

    bool Has(const std::string& part) const { return parts.contains(part); }
    /// Whether the source relates to the target by a type that ends so.
    bool Relates(const std::string& source, const std::string& tail, const std::string& target) const {
        for (const std::string& relationship : relationships)
            if (relationship.starts_with(source + " ") &&
                relationship.ends_with(std::string(tail).append(" ").append(target)))
                return true;
        return false;
    }
};
