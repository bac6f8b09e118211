#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "finish/FinishBoard.h"
#include "finish/FinishError.h"
#include "members/clsTblUserGroups.h"
#include "members/clsTblUsers.h"
#include "output/clsTblForums.h"
#include "output/clsTblPosts.h"
#include "output/clsTblThreads.h"
#include "platform/charset.h"
#include "tests/support/TemporaryFolder.h"
#include "text/numbers.h"
#include "translate/clsTblAnnouncements.h"
#include "translate/clsTblAttachments.h"

namespace tessaly::testing {

// The import files of a small board in utf-8, row by row, and what comes of finishing them.
class ImportBoard {
  public:
    ImportBoard() {
        options.folder = folder.Path() + u"\\";
        options.forumAddress = u"http://new.example/";
        options.programFolder = u"\\nowhere";
        options.charset = u"utf-8";
    }

    void Category(int fid, std::u16string name) { AddForum(fid, 0, u"c", std::move(name)); }
    void Forum(int fid, int pid, std::u16string name) { AddForum(fid, pid, u"f", std::move(name)); }

    void Thread(int tid, int fid, std::u16string subject, int firstPost, int posts) {
        clsTblThreads row;
        row.tid = tid;
        row.fid = fid;
        row.subject = std::move(subject);
        row.firstpost = firstPost;
        row.views = posts;
        row.replies = posts - 1;
        row.visible = 1;
        Add("mybb_threads", row);
    }

    // A post of the page that `editreason` names, such as "3^111^5".
    clsTblPosts Post(int pid, int uid, int dateline, std::u16string message, std::u16string editreason) {
        clsTblPosts row;
        row.pid = pid;
        row.tid = 99;  // which nobody may go by
        row.fid = 2;
        row.subject = u"Subject";
        row.uid = uid;
        row.username = u"Real Name " + ToText(uid);
        row.dateline = dateline;
        row.message = std::move(message);
        row.editreason = std::move(editreason);
        row.visible = 1;
        return row;
    }
    void AddPost(int pid, int uid, int dateline, std::u16string message, std::u16string editreason) {
        Add("mybb_posts", Post(pid, uid, dateline, std::move(message), std::move(editreason)));
    }

    clsTblUsers User(int uid, std::u16string name) {
        clsTblUsers row;
        row.uid = uid;
        row.username = std::move(name);
        row.password = u"aB3dE7gH1jK2m";
        row.email = u"someone@mail.example";
        row.usergroup = 8;
        row.regdate = 980884800;
        row.regip = 49494953;
        row.lastip = 49494953;
        return row;
    }
    void AddUser(int uid, std::u16string name) { Add("mybb_users", User(uid, std::move(name))); }

    void Attachment(int aid, int uid, std::u16string path, std::u16string type) {
        clsTblAttachments row;
        row.aid = aid;
        row.pid = uid;
        row.posthash = u"AB";
        row.uid = uid;
        row.filename = std::move(path);
        row.filetype = std::move(type);
        row.filesize = 7;
        row.visible = 1;
        Add("mybb_attachments", row);
    }

    void Announcement(int fid, std::u16string subject, std::u16string message) {
        clsTblAnnouncements row;
        row.aid = ++announcements_;
        row.fid = fid;
        row.subject = std::move(subject);
        row.message = std::move(message);
        row.allowmycode = 1;
        Add("mybb_announcements", row);
    }

    void Group(int gid, std::u16string title) {
        clsTblUserGroups row;
        row.gid = gid;
        row.title = std::move(title);
        row.namestyle = u"{username}";
        row.starimage = u"images/star.png";
        row.canview = 1;
        Add("mybb_usergroups", row);
    }

    // A line of the links that a run has noted; forum 0 for a link of an announcement.
    void Link(std::u16string address, int forum, int pid, std::u16string target) {
        Append("InternalLinks", u"[url=" + address + u"]a link[/url]^^" + ToText(forum) + u"^1^" +
                                    ToText(pid) + u"^111^" + target);
    }

    void Note(const std::string& lines) { note_ += lines; }

    template <typename Row>
    void Add(const std::string& family, const Row& row) {
        std::u16string text;
        row.BuildString(text);
        Append(family, text);
    }

    Finished Finish() {
        for (const auto& [family, bytes] : files_) folder.Write(family + "1.txt", bytes);
        if (!note_.empty()) folder.Write("FinishNote.txt", note_);
        return FinishBoard(options);
    }

    // The rows of a finished table, a column a piece.
    std::vector<std::vector<std::string>> Table(const std::string& name) const {
        std::vector<std::vector<std::string>> rows;
        for (const std::string& line : Split(folder.Read("finish/" + name + ".txt"), '\n')) {
            rows.push_back(Split(line, '\t'));
        }
        rows.pop_back();
        return rows;
    }

    // One column of all rows, from 0.
    std::vector<std::string> Column(const std::string& table, std::size_t column) const {
        std::vector<std::string> values;
        for (const auto& row : Table(table)) values.push_back(row.at(column));
        return values;
    }

    std::string Read(const std::string& name) const { return folder.Read("finish/" + name); }

    TemporaryFolder folder;
    FinishOptions options;

  private:
    static std::vector<std::string> Split(const std::string& text, char delimiter) {
        std::vector<std::string> pieces(1);
        for (const char unit : text) {
            if (unit == delimiter) {
                pieces.emplace_back();
            } else {
                pieces.back() += unit;
            }
        }
        return pieces;
    }

    void AddForum(int fid, int pid, std::u16string type, std::u16string name) {
        clsTblForums row;
        row.fid = fid;
        row.name = std::move(name);
        row.stype = std::move(type);
        row.pid = pid;
        row.disporder = 1;
        row.active = 1;
        row.lopen = 1;
        row.showinjump = 1;
        Add("mybb_forums", row);
    }

    void Append(const std::string& family, std::u16string_view row) {
        for (auto& [name, bytes] : files_) {
            if (name == family) {
                bytes += platform::ToUtf8(row) + "\r\n";
                return;
            }
        }
        files_.emplace_back(family, platform::ToUtf8(row) + "\r\n");
    }

    std::vector<std::pair<std::string, std::string>> files_;
    std::string note_;
    int announcements_ = 0;
};

}  // namespace tessaly::testing
