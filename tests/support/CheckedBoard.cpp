#include "tests/support/CheckedBoard.h"

namespace tessaly::testing {

const BoardCheck& CheckedBoard::Check() {
    check_.reset();
    checked_ = std::make_unique<ConversionState>();
    check_ = std::make_unique<BoardCheck>(*checked_);
    CopyFields(state, *checked_);
    check_->Run();
    return *check_;
}

const std::vector<Finding>& CheckedBoard::Of(FindingKind kind) const {
    return check_->Found().KeptOf(kind);
}

std::int64_t CheckedBoard::CountOf(FindingKind kind) const {
    return check_->Found().CountOf(kind);
}

std::int64_t CheckedBoard::LeftOutOf(FindingKind kind) const {
    return check_->Found().LeftOutOf(kind);
}

std::int64_t EndsOf(const BoardCheck& check) {
    return check.Found().CountOf(Grade::kEndsRun);
}

std::u16string MessageOf(const Finding& finding) {
    if (finding.reason.empty()) return finding.label;
    return finding.label + u"\r\n\r\n" + finding.reason;
}

}  // namespace tessaly::testing
