#include "check/BoardCheck.h"

#include <algorithm>
#include <chrono>

#include "check/printable.h"
#include "control/cmdConvert.h"
#include "members/clsGroup.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "reader/TagScanning.h"
#include "text/folding.h"
#include "text/numbers.h"
#include "text/split.h"

namespace tessaly {

namespace {

constexpr std::u16string_view kPost = u"<!--Post: ";
constexpr std::u16string_view kTop = u"<!--Top: ";

// The name of the member in whose line a place of the member file stands.
std::u16string_view NameAround(std::u16string_view members, Position at) {
    const std::u16string_view line = From(members, FindBackward(members, u"\n", at) + 1);
    return line.substr(0, line.find(u':'));
}

std::u16string FileKey(std::u16string_view path) {
    return Folded(path);
}

// Whether what is to be told of a finding is the path of a file.
bool IsPath(FindingKind kind) {
    using enum FindingKind;
    return kind == kMissingPage || kind == kHiddenPageLeftOut || kind == kMissingTopic ||
           kind == kMissingAttachment || kind == kSurplusAttachment || kind == kNoMemberFile ||
           kind == kNoCharacterFile;
}

// Of posts that are left out, each of those that follow counts.
std::int64_t CountOf(const Remark& remark) {
    if (remark.kind != FindingKind::kPostsBehindUnclosed) return remark.count;
    std::int64_t posts = 0;
    for (Position at = Find(remark.words, kPost); at != 0; at = Find(remark.words, kPost, at + 1)) ++posts;
    return posts;
}

// What is wrong with an attachment comes up twice: the anchor in its section is gone through as a link too.
bool IsOfFile(FindingKind kind) {
    using enum FindingKind;
    return kind == kMissingAttachment || kind == kAttachmentElsewhere || kind == kNoAttachment;
}

Finding FindingIn(std::u16string file) {
    Finding finding;
    finding.page = std::move(file);
    return finding;
}

std::u16string Joined(std::u16string_view folder, char16_t separator, std::u16string_view file) {
    std::u16string path(folder);
    path += separator;
    path += file;
    return path;
}

// The page that the entry of a sub-topic leads to. On a page without a subject its link has mostly no query.
std::u16string PathOfEntry(ConversionState& state, std::u16string_view entry) {
    std::u16string link(FirstTagSection(state, entry, u"<a href=", u">"));
    for (const std::u16string_view part : {u"<a href=", u">", u"\""}) RemoveAll(link, part);
    link.resize(std::min(link.find_first_of(u"? "), link.size()));
    std::u16string fileName;
    std::u16string folderNumber;
    return BuildTopicFilePath(state, link, fileName, folderNumber);
}

// The file that a message names behind the routine that read it.
std::u16string_view FileIn(std::u16string_view label) {
    constexpr std::u16string_view kReader = u"GetFileDataCharset() - ";
    const Position at = Find(label, kReader);
    return at == 0 ? std::u16string_view() : From(label, at + Length(kReader));
}

bool IsNumber(std::u16string_view name) {
    return !name.empty() && LeadingDigits(name).size() == name.size();
}

}  // namespace

BoardCheck::BoardCheck(ConversionState& state) : state_(state), nodesInHand_(1), forumsInHand_(1) {
    HookIn();
}

void BoardCheck::HookIn() {
    listener_.Failed = [this](auto label, const auto& error) { TakeFailure(label, error); };
    listener_.Noted = [this](const Remark& remark) { TakeRemark(remark); };
    listener_.BoardRead = [this](auto path, auto text) {
        boardPath_ = path;
        boardText_ = text;
    };
    listener_.MayEnterPage = [this] { return MayEnterPage(); };
    listener_.MustLeavePage = [this] { return MustLeavePage(); };
    listener_.ForumMade = [this](auto name, bool isCategory, auto id) { TakeForum(name, isCategory, id); };
    listener_.ForumIdOf = [this](auto name) { return ForumIdOf(name); };
    listener_.PostRead = [this](auto time) { TakePost(time); };
    listener_.PartMet = [this](auto words) { TakePart(words); };
    listener_.RowMade = [this](auto row) { TakeRow(row); };
    listener_.SequenceMet = [this](auto sequence, bool isEntered) { TakeSequence(sequence, isEntered); };
    listener_.FileTaken = [this](auto source, auto length) { TakeFile(source, length); };
    state_.Check = &listener_;
    // A run also counts as cancelled when it cannot begin.
    state_.ToolboxA.WaitBegun = [this] { isCancelled_ = true; };
    // The members are let go behind this.
    state_.ToolboxA.WaitEnded = [this] { CountMembers(); };
}

void BoardCheck::Run() {
    state_.ShowMessage = [this](std::u16string_view text) {
        if (!state_.Progress.SummaryShown) TakeMessage(text);
    };
    try {
        cmdConvert_Click(state_);
    } catch (...) {
        TakeFailure(u"", CurrentError());
    }
    TakeUnknownSequences();
    if (!IsCancelled()) FindUnreached();
}

void BoardCheck::TakeFailure(std::u16string_view label, const RunTimeError& error) {
    if (IsInLoop()) return TakeLoop(label, error);
    const FindingKind kind = KindOf(label, error);
    if (firstEnd_ && findings_.IsFull(kind)) return TakeEnd(kind, {});
    const std::u16string_view file = FileIn(label);
    Finding finding =
        FailureAt(file.empty() ? InHand() : Source{std::u16string(file)}, WordsOf(kind), label, error);
    finding.detail = Printable(DetailOf(kind));
    TakeEnd(kind, std::move(finding));
}

Finding BoardCheck::FailureAt(const Source& source, std::u16string_view words, std::u16string_view label,
                              const RunTimeError& error) {
    Finding finding = FindingAt(source, words);
    finding.label = ToText(error.number) + std::u16string(label);
    finding.reason = error.description;
    return finding;
}

void BoardCheck::TakeMessage(std::u16string_view text) {
    Finding finding;
    finding.label = text;
    TakeEnd(FindingKind::kMessage, std::move(finding));
}

void BoardCheck::TakeEnd(FindingKind kind, Finding finding) {
    if (!firstEnd_) firstEnd_ = finding;
    findings_.Add(kind, std::move(finding));
}

void BoardCheck::TakeRemark(const Remark& remark) {
    if (IsInLoop()) return;
    const std::int64_t count = CountOf(remark);
    const std::u16string passedOver = TakePassedOver(remark);
    if (IsOfFile(remark.kind) && IsToldOfFile(remark.kind)) return;
    if (findings_.IsFull(remark.kind)) return findings_.Add(remark.kind, {}, count);
    Finding finding = FindingOf(remark);
    if (!passedOver.empty()) finding.detail = Printable(platform::WithNativeSeparators(passedOver));
    findings_.Add(remark.kind, std::move(finding), count);
}

Finding BoardCheck::FindingOf(const Remark& remark) {
    if (remark.kind == FindingKind::kUndecodedCharacter) {
        // A whole file that was just read, before anything in it is in hand.
        Finding finding = FindingAt({std::u16string(remark.detail), remark.words}, u"\uFFFD");
        if (IsMemberFile(remark.detail))
            finding.words = Printable(NameAround(remark.words, finding.position));
        return finding;
    }
    const bool isEntry =
        remark.kind == FindingKind::kMissingPage || remark.kind == FindingKind::kHiddenPageLeftOut;
    const std::u16string_view words = IsOfFile(remark.kind) ? WordsOf(remark.kind) : remark.words;
    Finding finding = FindingAt(isEntry ? Above() : InHand(), words);
    finding.detail = Printable(IsPath(remark.kind) ? platform::WithNativeSeparators(remark.detail)
                                                   : std::u16string(remark.detail));
    return finding;
}

bool BoardCheck::IsMemberFile(std::u16string_view path) const {
    return path == state_.UserFile || path == state_.UsersFile;
}

// Notes it as told.
bool BoardCheck::IsToldOfFile(FindingKind kind) {
    const Position position = PositionIn(InHand(), part_ > 0 ? std::u16string_view() : WordsOf(kind));
    if (filesToldOf_ != tally_.nodes.size()) filesTold_.clear();
    filesToldOf_ = tally_.nodes.size();
    return !filesTold_.emplace(kind, position).second;
}

bool BoardCheck::MayEnterPage() {
    if (IsInLoop() && state_.Depth > loopLevel_) return true;
    loopLevel_ = 0;
    const bool isNew = pagesTold_.insert(FileKey(CurrentIndex(state_).PagePath)).second;
    if (!LeadsBack()) return isNew || !hasLoop_;
    loopEntry_ = FindingAt(Above(), {});
    if (hasLoop_) {
        TakeEnd(FindingKind::kPageLoop, loopEntry_);
        return false;
    }
    BeginLoop();
    return true;
}

bool BoardCheck::LeadsBack() {
    const std::u16string& path = CurrentIndex(state_).PagePath;
    const auto isSame = [&path](const DataIndexElement& page) { return page.PagePath == path; };
    return std::any_of(state_.DataIndex.begin(), state_.DataIndex.end() - 1, isSame);
}

void BoardCheck::BeginLoop() {
    hasLoop_ = true;
    isLoopOver_ = false;
    loopLevel_ = state_.Depth;
    countersBefore_ = {state_.ForumCounter, state_.ThreadCounter, state_.PostCounter,
                       state_.AttachmentCounter, state_.AnnouncementCounter};
}

bool BoardCheck::MustLeavePage() {
    if (!IsInLoop() || !isLoopOver_) return false;
    if (state_.Depth > loopLevel_) return true;
    state_.ForumCounter = countersBefore_.forums;
    state_.ThreadCounter = countersBefore_.threads;
    state_.PostCounter = countersBefore_.posts;
    state_.AttachmentCounter = countersBefore_.attachments;
    state_.AnnouncementCounter = countersBefore_.announcements;
    loopLevel_ = 0;
    return true;
}

// The failure at the deepest level, told at the entry where the loop begins.
void BoardCheck::TakeLoop(std::u16string_view label, const RunTimeError& error) {
    if (isLoopOver_ || error.number != kOutOfStackSpace) return;
    isLoopOver_ = true;
    loopEntry_.label = ToText(error.number) + std::u16string(label);
    loopEntry_.reason = error.description;
    TakeEnd(FindingKind::kPageLoop, loopEntry_);
}

void BoardCheck::TakeForum(std::u16string_view name, bool isCategory, std::int32_t forumId) {
    if (IsInLoop()) return;
    if (!isCategory) return TakePage(name, forumId);
    categoryPlace_ = listener_.BoardPlace;
    nodesInHand_[0] = tally_.nodes.size();
    tally_.nodes.push_back({Printable(name), {}, tally_.nodes.size()});
}

void BoardCheck::TakePage(std::u16string_view name, std::int32_t forumId) {
    const auto depth = static_cast<std::size_t>(state_.Depth);
    const DataIndexElement& page = CurrentIndex(state_);
    ++tally_.pages;
    nodesInHand_.resize(depth + 1);
    forumsInHand_.resize(depth + 1);
    nodesInHand_[depth] = tally_.nodes.size();
    forumsInHand_[depth] = forumId;
    const auto steps = Split(page.PagePath, u"\\");
    const std::size_t count = steps.size();
    std::u16string file(steps.back());
    if (count > 1) file = std::u16string(steps[count - 2]) + u"/" + file;
    tally_.nodes.push_back({Printable(name), Printable(file), nodesInHand_[depth - 1]});
    NoteNamedFiles(page.PageData);
}

BoardNode* BoardCheck::NodeInHand() {
    const auto depth = static_cast<std::size_t>(state_.Depth);
    return depth < nodesInHand_.size() && !tally_.nodes.empty() ? &tally_.nodes[nodesInHand_[depth]]
                                                                : nullptr;
}

// A run looks the forum of the page in hand up by its name, and ends when it has none; another page may have
// taken the name over in between.
std::int32_t BoardCheck::ForumIdOf(std::u16string_view name) {
    const std::int32_t* const found = state_.ForumIdsByName.Find(name);
    const auto depth = static_cast<std::size_t>(state_.Depth);
    if (found == nullptr) {
        TakeForumName(name);
        return state_.ForumCounter;
    }
    const bool isPage = depth > 0 && depth < forumsInHand_.size();
    if (isPage && !hasLoop_ && *found != forumsInHand_[depth]) {
        TakeRemark({FindingKind::kOtherForum, {}, name});
    }
    return *found;
}

// Told once. From then on the name is as good as entered.
void BoardCheck::TakeForumName(std::u16string_view name) {
    const bool isCategory = state_.Depth == 0;
    const Source source = isCategory ? Source{boardPath_, boardText_, categoryPlace_}
                                     : Source{CurrentIndex(state_).PagePath, CurrentIndex(state_).PageData};
    const std::u16string label = isCategory ? u" - DiscusProcessDiscusMainBoardFile() - " + boardPath_
                                            : u" - DiscusProcessBoardTopics() - " + source.path;
    Finding finding = FailureAt(source, isCategory ? u"" : u"<!--Me: ", label,
                                {kInvalidCall, u"Invalid procedure call or argument"});
    finding.detail = Printable(name);
    TakeEnd(FindingKind::kForumName, std::move(finding));
    state_.ForumIdsByName.Add(name, state_.ForumCounter);
}

void BoardCheck::TakePost(std::optional<std::int32_t> time) {
    ++tally_.posts;
    if (BoardNode* const node = NodeInHand()) ++node->posts;
    if (!time) return;
    const auto day =
        std::chrono::floor<std::chrono::days>(std::chrono::sys_seconds(std::chrono::seconds(*time)));
    ++tally_.postsByYear[static_cast<int>(std::chrono::year_month_day(day).year())];
}

// The page that an entry leads to and the run does not enter: with the entry it is told.
std::u16string BoardCheck::TakePassedOver(const Remark& remark) {
    std::u16string path;
    if (remark.kind == FindingKind::kNoSubject) {
        IgnoringErrors([&] { path = PathOfEntry(state_, remark.words); });
    } else if (remark.kind == FindingKind::kTouchingSection && StandsAt(remark.words, 1, kTop)) {
        const std::u16string number(LeadingDigits(From(remark.words, Length(kTop) + 1)));
        path = state_.DiscusMessageFolder + number + u"\\" + number + u".html";
    }
    if (path.empty()) return path;
    std::u16string secure(path);
    ReplaceAll(secure, state_.DiscusMessageFolder, state_.DiscusSecureMessageFolder);
    pagesTold_.insert(FileKey(path));
    pagesTold_.insert(FileKey(secure));
    return path;
}

void BoardCheck::TakeRow(std::u16string_view row) {
    if (IsInLoop()) return;
    if (!charset_) charset_.emplace(state_.Charset);
    const std::u16string_view first = charset_->FirstLacked(row);
    if (first.empty()) return;
    std::int64_t count = 0;
    for (auto lacked = first; !lacked.empty();) {
        ++count;
        lacked =
            charset_->FirstLacked(row, static_cast<std::size_t>(lacked.data() - row.data()) + lacked.size());
    }
    TakeRemark({FindingKind::kLackedCharacter, std::u16string(first), first, count});
}

void BoardCheck::TakeSequence(std::u16string_view sequence, bool isEntered) {
    if (IsInLoop() || (!isEntered && unknown_.empty())) return;
    std::u16string key = Folded(sequence);
    if (!isEntered) {
        const auto known = unknown_.find(key);
        if (known != unknown_.end()) ++known->second.count;
        return;
    }
    UnknownSequence& unknown = unknown_[std::move(key)];
    unknown.text = Printable(sequence);
    unknown.first.page = InHand().path;
}

void BoardCheck::TakeFile(std::u16string_view source, std::int64_t length) {
    if (IsInLoop()) return;
    ++tally_.attachments;
    tally_.attachmentBytes += length;
    if (BoardNode* const node = NodeInHand()) ++node->files;
    // A page's rows are written with its posts: for a file of an announcement there is none any more.
    if (!StandsAt(listener_.Section, 1, kPost)) TakeRemark({FindingKind::kSurplusAttachment, {}, source});
}

// The uploads that a page names in any address.
void BoardCheck::NoteNamedFiles(std::u16string_view page) {
    constexpr std::u16string_view kEnds = u"\"'<> ?#\r\n\t";
    for (const std::u16string_view folder : {u"/messages/", u"/secure/"}) {
        for (Position at = Find(page, folder); at != 0; at = Find(page, folder, at + 1)) {
            const auto from = static_cast<std::size_t>(at + Length(folder)) - 1;
            const std::size_t end = std::min(page.find_first_of(kEnds, from), page.size());
            const std::u16string_view name = page.substr(from, end - from);
            if (!Contains(name, u".html")) filesNamed_.insert(FileKey(name));
        }
    }
}

void BoardCheck::CountMembers() {
    tally_.members = state_.MembersById.Count();
    tally_.groups = state_.GroupsByName.Count();
}

void BoardCheck::FindUnreached() {
    // Where the walk never took place nothing can be told of what it left out.
    if (!WasBoardRead()) return;
    for (const std::u16string& messageFolder :
         {state_.DiscusMessageFolder, state_.DiscusSecureMessageFolder}) {
        // Hidden pages that are to be left out are told where an entry leads to them.
        const bool isLeftOut =
            !state_.optCreateHiddenTopics && messageFolder == state_.DiscusSecureMessageFolder;
        if (isLeftOut || !platform::FolderExists(messageFolder)) continue;
        std::vector<std::u16string> folders;
        IgnoringErrors([&] { folders = platform::Subfolders(messageFolder); });
        for (const std::u16string& folder : folders) {
            // A folder that cannot be looked into was none for the run either.
            if (IsNumber(folder)) IgnoringErrors([&] { FindUnreached(messageFolder, folder); });
        }
    }
}

void BoardCheck::FindUnreached(std::u16string_view messageFolder, std::u16string_view folder) {
    const std::u16string path = ToolboxLibrary::AddBackslash(messageFolder) + std::u16string(folder);
    for (const std::u16string& file : platform::Files(path)) {
        const std::u16string whole = Joined(path, u'\\', file);
        const std::u16string_view stem = std::u16string_view(file).substr(0, file.rfind(u'.'));
        const bool isPage = IsNumber(stem) && EqualIgnoringCase(file.substr(stem.size()), u".html");
        if (isPage) {
            if (!pagesTold_.contains(FileKey(whole))) {
                findings_.Add(FindingKind::kUnreachedPage, FindingIn(whole));
            }
        } else if (!filesNamed_.contains(FileKey(Joined(folder, u'/', file)))) {
            findings_.Add(FindingKind::kUnusedFile, FindingIn(whole));
        }
    }
}

void BoardCheck::TakeUnknownSequences() {
    for (auto& [key, unknown] : unknown_) {
        unknown.first.detail = unknown.text;
        findings_.Add(FindingKind::kUnknownSequence, std::move(unknown.first), unknown.count);
    }
}

void CopyFields(const ConversionState& from, ConversionState& to) {
    using TextMember = TextField ConversionState::*;
    constexpr TextMember kFields[] = {
        &ConversionState::txtDiscusRootFolder,
        &ConversionState::txtDiscusMessageFolder,
        &ConversionState::txtDiscusSecureMessageFolder,
        &ConversionState::txtDiscusMainFolder,
        &ConversionState::txtmybbOutputFolder,
        &ConversionState::txtmybbAttachmentsFolder,
        &ConversionState::txtDiscusWebsite,
        &ConversionState::txtmybbForumAddr,
        &ConversionState::txtDefaultAdmin,
        &ConversionState::txtDefaultUsers,
        &ConversionState::txtDefaultGroups,
        &ConversionState::txtSplitMBSize,
        &ConversionState::cboCharset,
    };
    for (const TextMember field : kFields) (to.*field).Text = (from.*field).Text;
    to.chkCreateHiddenTopics.Value = from.chkCreateHiddenTopics.Value;
    to.optCreateRedirectionFiles = from.optCreateRedirectionFiles;
    to.optFindDiscusSpecialCharacters = from.optFindDiscusSpecialCharacters;
    to.optCreateAttachments = from.optCreateAttachments;
    to.optCreateHiddenTopics = from.optCreateHiddenTopics;
    to.Charset = from.Charset;
    to.DefaultGroupCount = from.DefaultGroupCount;
    to.DefaultUserCount = from.DefaultUserCount;
    to.ProgramFolder = from.ProgramFolder;
    to.ProgramName = from.ProgramName;
    to.SettingsFile = from.SettingsFile;
    to.IniFile = from.IniFile;
}

}  // namespace tessaly
