#include "check/Findings.h"

#include <utility>

namespace tessaly {

void Findings::Add(FindingKind kind, Finding finding, std::int64_t count) {
    OfKind& ofKind = kinds_[static_cast<std::size_t>(kind)];
    ofKind.count += count;
    ++ofKind.added;
    finding.count = count;
    if (ofKind.kept.size() < kMostKept) ofKind.kept.push_back(std::move(finding));
}

std::int64_t Findings::CountOf(FindingKind kind) const {
    return kinds_[static_cast<std::size_t>(kind)].count;
}

std::int64_t Findings::CountOf(Grade grade) const {
    std::int64_t count = 0;
    for (const KindTexts& texts : AllKinds()) {
        if (texts.grade == grade) count += CountOf(texts.kind);
    }
    return count;
}

const std::vector<Finding>& Findings::KeptOf(FindingKind kind) const {
    return kinds_[static_cast<std::size_t>(kind)].kept;
}

std::int64_t Findings::LeftOutOf(FindingKind kind) const {
    const OfKind& ofKind = kinds_[static_cast<std::size_t>(kind)];
    return ofKind.added - static_cast<std::int64_t>(ofKind.kept.size());
}

}  // namespace tessaly
