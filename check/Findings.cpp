#include "check/Findings.h"

#include <utility>

namespace tessaly {

namespace {

// What is wrong with an attachment comes up twice: the anchor in its section is gone through as a link too.
bool IsOfFile(FindingKind kind) {
    using enum FindingKind;
    return kind == kAttachmentAddress || kind == kWebsite || kind == kMissingAttachment ||
           kind == kAttachmentElsewhere || kind == kNoAttachment;
}

bool IsSamePlace(const Finding& one, const Finding& other) {
    return one.position > 0 && one.position == other.position && one.page == other.page &&
           one.detail == other.detail;
}

}  // namespace

void Findings::Add(FindingKind kind, Finding finding, std::int64_t count) {
    OfKind& ofKind = kinds_[static_cast<std::size_t>(kind)];
    if (IsOfFile(kind) && !ofKind.kept.empty() && IsSamePlace(ofKind.kept.back(), finding)) return;
    ofKind.count += count;
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

}  // namespace tessaly
