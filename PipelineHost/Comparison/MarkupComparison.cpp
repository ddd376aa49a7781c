#include "Comparison/MarkupComparison.h"

#include <algorithm>

namespace OvPipeline {

namespace {

std::string Described(const MarkupEvent& event, bool isThere) {
    if (!isThere) return "the end";
    switch (event.kind) {
    case MarkupEvent::Kind::Start:
        return "<" + event.name + ">";
    case MarkupEvent::Kind::End:
        return "</" + event.name + ">";
    default:
        return "\"" + event.text + "\"";
    }
}

// Of two start tags of one name.
MarkupDifference InAttributes(const std::string& place, const MarkupEvent& a, const MarkupEvent& b) {
    auto left = a.attributes.begin();
    auto right = b.attributes.begin();
    while (left != a.attributes.end() && right != b.attributes.end() && left->name == right->name &&
           left->meaning == right->meaning) {
        ++left;
        ++right;
    }
    const bool isLeft =
        left != a.attributes.end() && (right == b.attributes.end() || left->name <= right->name);
    const bool isRight =
        right != b.attributes.end() && (left == a.attributes.end() || right->name <= left->name);
    return {place + ", " + (isLeft ? left->name : right->name), isLeft ? left->written : "",
            isRight ? right->written : ""};
}

} // namespace

void AddMeaning(ContentDigest& digest, MarkupReader& markup) {
    for (MarkupEvent event; markup.Next(event);) {
        const auto kind = static_cast<char>(event.kind);
        digest.Add(&kind, 1).AddText(event.name).AddText(event.text);
        const std::size_t count = event.attributes.size();
        digest.Add(&count, sizeof count);
        for (const MarkupEvent::Attribute& attribute : event.attributes)
            digest.AddText(attribute.name).AddText(attribute.meaning);
    }
}

std::optional<MarkupDifference> FindDifference(MarkupReader& a, MarkupReader& b) {
    MarkupEvent left, right;
    while (true) {
        const bool isLeft = a.Next(left);
        const bool isRight = b.Next(right);
        if (!isLeft && !isRight) return std::nullopt;
        if (isLeft && isRight && left.Means(right)) continue;
        const bool isStart = isLeft && isRight && left.kind == MarkupEvent::Kind::Start &&
                             right.kind == MarkupEvent::Kind::Start && left.name == right.name;
        if (isStart) return InAttributes(a.Place(), left, right);
        return MarkupDifference{isLeft ? a.Place() : b.Place(), Described(left, isLeft),
                                Described(right, isRight)};
    }
}

} // namespace OvPipeline
