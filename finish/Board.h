#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "finish/FinishNote.h"
#include "finish/ImportRows.h"
#include "finish/Names.h"

namespace tessaly {

// What the operator wants of the new forum.
struct FinishOptions {
    std::u16string folder;  // of the import files, with a backslash at its end
    std::u16string prefix = u"mybb_";
    std::int64_t firstForum = 3;
    std::int64_t firstThread = 1;
    std::int64_t firstPost = 1;
    bool keepPagesAsForums = false;
    std::u16string forumAddress;  // empty: the one that the note tells
    std::u16string charset;       // empty: the one that the note tells
    std::u16string programFolder;
    std::vector<std::u16string> sourceFolders;
};

// A page of the old board, by the numbers of its folder and its file.
struct PageKey {
    std::uint64_t folder = 0;
    std::uint64_t file = 0;
    bool operator==(const PageKey&) const = default;
};

struct PageKeyHash {
    std::size_t operator()(const PageKey& key) const {
        return std::hash<std::uint64_t>()(key.folder * 0x9E3779B97F4A7C15 + key.file);
    }
};

inline constexpr std::size_t kNone = static_cast<std::size_t>(-1);

// Who wrote: the account's number and name, number 0 for one without an account.
struct Poster {
    std::int32_t uid = 0;
    std::u16string name;
};

struct Forum {
    std::int32_t oldFid = 0;
    std::size_t parent = kNone;
    bool isCategory = false;
    bool hasSubForum = false;
    bool isFolded = false;
    std::int64_t fid = 0;
    std::int64_t order = 0;
    std::u16string parentList;
    std::int64_t threads = 0;
    std::int64_t posts = 0;
    std::size_t lastThread = kNone;
};

struct Thread {
    std::int32_t oldFid = 0;
    std::size_t forum = kNone;
    std::int64_t firstPid = 0;  // the span of its posts in the import files
    std::int64_t pidCount = 0;
    PageKey page;
    std::int64_t tid = 0;
    std::int64_t posts = 0;
    std::int64_t attachments = 0;
    std::int64_t firstPost = 0;
    std::int64_t firstTime = 0;
    std::int32_t firstUid = 0;
    std::int64_t lastTime = 0;
    std::int32_t lastUid = 0;
    bool hasRow = true;
};

struct Member {
    std::u16string name;
    std::int64_t posts = 0;
    std::int64_t threads = 0;
};

struct Attachment {
    std::int64_t aid = 0;
    std::int32_t oldPid = 0;
    bool hasRow = true;
};

// A link line's target: the page, and the post of it that the old address names, 0 for none.
struct LinkTarget {
    PageKey page;
    std::uint64_t post = 0;
};

struct PostKey {
    std::uint64_t file = 0;
    std::uint64_t post = 0;
    bool operator==(const PostKey&) const = default;
};

struct PostKeyHash {
    std::size_t operator()(const PostKey& key) const {
        return std::hash<std::uint64_t>()(key.file * 0x9E3779B97F4A7C15 + key.post);
    }
};

// What does not come over as it was, for the operator to read.
struct LeftOver {
    std::vector<std::u16string> notes;         // about the whole
    std::vector<std::u16string> longMessages;  // continued in further posts
    std::vector<std::u16string> links;         // to pages that were not converted
    std::vector<std::u16string> attachments;   // without a post
    std::vector<std::u16string> announced;     // files of announcements
    std::vector<std::u16string> hiddenPages;   // which all may read now
    std::vector<std::u16string> members;       // with another name
};

// The index of a converted board: all that is held in memory while its rows go by.
struct Board {
    FinishOptions options;
    ImportFolder import;
    FinishNote note;
    bool hasNote = false;

    std::vector<Forum> forums;  // in the order of the board
    std::unordered_map<std::int32_t, std::size_t> forumsByFid;
    std::unordered_map<PageKey, std::size_t, PageKeyHash> forumsByPage;  // as far as the note tells
    std::vector<Thread> threads;  // one without a post is left out of the new forum
    std::unordered_map<PageKey, std::size_t, PageKeyHash> threadsByPage;
    std::unordered_map<std::uint64_t, std::size_t> threadsByFile;  // kNone where two pages have the number
    std::unordered_map<PageKey, std::size_t, PageKeyHash> threadsWithoutRow;
    std::vector<std::u16string> subjectsWithoutRow;  // in the order of these threads
    std::size_t threadRows = 0;

    std::unordered_map<std::int32_t, Member> members;
    std::unordered_map<std::int32_t, std::u16string> strangers;  // names of posters that are no members

    std::unordered_map<std::int32_t, Attachment> attachments;               // by the aid of the import files
    std::unordered_map<std::int32_t, std::vector<std::int64_t>> aidsByPid;  // of the import files' posts

    std::unordered_map<std::uint64_t, LinkTarget> links;  // by the address
    std::unordered_map<PostKey, std::int64_t, PostKeyHash> linkedPosts;

    std::vector<std::uint32_t> pids;  // the new number of each post of the import files
    std::int64_t lastPid = 0;

    std::int64_t guestPosts = 0;
    LeftOver leftOver;
};

// The place of the thread that a post belongs to, told by its number; kNone when no thread row spans it.
std::size_t ThreadOfPost(const Board& board, std::int32_t pid);

// The thread that a page of the old board has become; kNone when it was not converted.
std::size_t ThreadOfPage(const Board& board, const PageKey& page);

// The account of a poster. The administrator is the forum's own; who has no row is a guest.
Poster PosterOf(const Board& board, std::int32_t uid);

// The page that a path such as /discus/messages/3/115.html leads to.
PageKey PageAtPath(std::u16string_view path);

// The number at the head of a text, 0 when it begins with no digit.
std::uint64_t LeadingDigitsOf(std::u16string_view text);

}  // namespace tessaly
