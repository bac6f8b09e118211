#include "finish/Guide.h"

#include "platform/TextFile.h"
#include "platform/paths.h"
#include "text/numbers.h"
#include "text/search.h"

namespace tessaly {

namespace {

using platform::OpenMode;
using platform::TextFile;
using platform::TextFormat;

constexpr std::u16string_view kLeftOverName = u"Left over.txt";

std::u16string CountText(std::size_t count, std::u16string_view one, std::u16string_view many) {
    return ToText(static_cast<std::int64_t>(count)) + u" " + std::u16string(count == 1 ? one : many);
}

struct Listing {
    const std::vector<std::u16string>& lines;
    std::u16string_view one;
    std::u16string_view many;
};

std::vector<Listing> ListingsOf(const LeftOver& left) {
    return {
        {left.links, u"link leads to a page that was not converted and keeps its old address",
         u"links lead to pages that were not converted and keep their old addresses"},
        {left.hiddenPages, u"page was hidden on the old board, and all can read it now",
         u"pages were hidden on the old board, and all can read them now"},
        {left.attachments, u"attachment has no place, since its post is not known",
         u"attachments have no place, since their posts are not known"},
        {left.longMessages, u"message was too long for one post", u"messages were too long for one post"},
        {left.members,
         u"member has another name, since the forum would have taken it for another's or it was "
         u"too long",
         u"members have other names, since the forum would have taken them for others' or they were too "
         u"long"},
    };
}

bool HasLeftOver(const LeftOver& left) {
    if (!left.notes.empty()) return true;
    for (const Listing& listing : ListingsOf(left)) {
        if (!listing.lines.empty()) return true;
    }
    return false;
}

void WriteLeftOver(const LeftOver& left, std::u16string_view folder) {
    if (!HasLeftOver(left)) return;
    TextFile file(std::u16string(folder) + std::u16string(kLeftOverName), OpenMode::kWriting,
                  TextFormat::kUtf8);
    for (const std::u16string& note : left.notes) file.WriteLine(note);
    for (const Listing& listing : ListingsOf(left)) {
        if (listing.lines.empty()) continue;
        file.WriteLine(u"");
        file.WriteLine(CountText(listing.lines.size(), listing.one, listing.many) + u":");
        for (const std::u16string& line : listing.lines) file.WriteLine(u"    " + line);
    }
    file.Close();
}

constexpr std::u16string_view kToMembers =
    u"The forum has moved. Your account is there under your old user name, with all you wrote. Passwords "
    u"could "
    u"not move: on the page where you log in, follow \"Lost password\", give the mail address that you had "
    u"on "
    u"the old board, and choose a new one. If that address is out of date, write to us.";

void WriteAfter(std::u16string_view folder) {
    TextFile file(std::u16string(folder) + u"3 After.txt", OpenMode::kWriting, TextFormat::kUtf8);
    for (const std::u16string_view line : {
             u"When 2 Load.sql has said \"loaded\", log in to the forum's administration and press these:",
             u"",
             u"1. Tools & Maintenance > Cache Manager: \"Rebuild & Reload All\".",
             u"   Until then the forum shows its old list of forums and groups.",
             u"",
             u"2. Tools & Maintenance > Recount & Rebuild: \"Go\" beside each of the counters, those of "
             u"forums,",
             u"   threads, posts of users, threads of users and the statistics. They are right for what was",
             u"   loaded; this adds what the administrator wrote on the old board, and what else is in the "
             u"forum.",
             u"",
             u"Then:",
             u"",
             u"- Copy the files of the folder \"attachments\", which lies beside this folder, into the "
             u"forum's",
             u"  folder \"uploads\", if that is not done yet. The web server must be able to read them.",
             u"- Look over the new groups under Users & Groups: a group of the old board may read and write "
             u"here,",
             u"  and nothing more.",
             u"- Tell the members, for example:",
             u"",
         })
        file.WriteLine(line);
    file.WriteLine(kToMembers);
    file.Close();
}

std::u16string RowsText(const std::vector<TableSummary>& tables) {
    std::u16string text;
    for (const TableSummary& table : tables) {
        if (!text.empty()) text += u", ";
        text += ToText(table.rows) + u" " + std::u16string(table.table);
    }
    return text;
}

std::vector<std::u16string> ReadmeLines(const Board& board, const std::vector<TableSummary>& tables,
                                        std::int64_t pages) {
    const std::u16string prefix = board.options.prefix;
    std::vector<std::u16string> lines = {
        u"From here to a living forum",
        u"",
        u"This folder holds the converted board as a forum of the 1.8 line takes it: " + RowsText(tables) +
            u".",
        u"Nothing in it was loaded anywhere yet. It takes a command line client of the database, " +
            std::u16string(u"\"mariadb\" or \"mysql\","),
        u"the name, user and password of the forum's database (they stand in inc/config.php of the forum), "
        u"and",
        u"some minutes.",
        u"",
    };
    if (HasLeftOver(board.leftOver)) {
        lines.insert(lines.end(), {u"What could not come over as it was stands in \"" +
                                       std::u16string(kLeftOverName) + u"\". Read that first.",
                                   u""});
    }
    const std::vector<std::u16string> steps = {
        u"1. Back up the forum's database, and close the forum in its administration while you work.",
        u"",
        u"2. Copy this folder to a machine from which the database can be reached, and go into it.",
        u"",
        u"3. Ask whether all is ready. This changes nothing:",
        u"",
        u"       mariadb --user=NAME --password --table DATABASE < \"1 Check.sql\"",
        u"",
        u"   The last line of its table says \"ready\", or \"not ready\" and why; the lines above tell what "
        u"to do.",
        u"   The tables are taken to be named " + prefix +
            u"posts and so on; another prefix is said by --prefix.",
        u"",
        u"4. Load:",
        u"",
        u"       mariadb --user=NAME --password --local-infile=1 DATABASE < \"2 Load.sql\"",
        u"",
        u"   It ends with \"loaded\". Or it ends with an error whose text tells what is wrong; then nothing "
        u"has",
        u"   changed, provided that the tables are of an engine with transactions, such as InnoDB. With "
        u"MyISAM",
        u"   put the backup back before you try again.",
        u"",
        u"5. Copy the files of the folder \"attachments\", which lies beside this one, into the forum's "
        u"\"uploads\".",
        u"",
        u"6. Do what \"3 After.txt\" says.",
        u"",
        u"7. Lead the visitors of the old addresses to the new ones. redirect.nginx.conf and "
        u"redirect.apache.txt",
        u"   have a line for each of " + ToText(pages) +
            u" pages, the old path and the new address. Use one of them on",
        u"   the server that answers under the old name:",
        u"",
        u"   nginx, in the http part of its settings, with the second line in the server part:",
        u"",
        u"       map_hash_max_size 1048576; map_hash_bucket_size 256; include /FOLDER/redirect.nginx.conf;",
        u"       if ($new_address) { return 301 $new_address; }",
        u"",
        u"   Apache, in its settings or those of the virtual host:",
        u"",
        u"       RewriteEngine On",
        u"       RewriteMap discus \"txt:/FOLDER/redirect.apache.txt\"",
        u"       RewriteCond ${discus:%{REQUEST_URI}} (.+)",
        u"       RewriteRule ^ %1 [R=301,L,NE]",
        u"",
        u"   The pages of the folder \"redirect\" beside this one do the same by a page that waits some "
        u"seconds.",
        u"   With the map in force they are not needed: leave them out, or delete them from the old site. "
        u"Search",
        u"   engines follow the map and not the pages.",
        u"",
        u"8. Open the forum. When visitors find what they look for, this folder may go.",
        u"",
        u"The passwords of the old board fit no other forum. Each member has a random one that nobody knows "
        u"and",
        u"asks for a new one by mail; \"3 After.txt\" has a text for them. Those who wrote without being "
        u"members",
        u"have accounts without a mail address, which nobody can enter.",
    };
    lines.insert(lines.end(), steps.begin(), steps.end());
    return lines;
}

}  // namespace

void WriteGuide(const Board& board, const std::vector<TableSummary>& tables, std::int64_t pages,
                std::u16string_view folder) {
    TextFile readme(std::u16string(folder) + u"README.txt", OpenMode::kWriting, TextFormat::kUtf8);
    for (const std::u16string& line : ReadmeLines(board, tables, pages)) readme.WriteLine(line);
    readme.Close();
    WriteAfter(folder);
    WriteLeftOver(board.leftOver, folder);
}

std::u16string FinishSummary(const Board& board, const std::vector<TableSummary>& tables) {
    std::u16string text = u"Finished: " + RowsText(tables) + u".\n";
    for (const Listing& listing : ListingsOf(board.leftOver)) {
        if (!listing.lines.empty())
            text += CountText(listing.lines.size(), listing.one, listing.many) + u".\n";
    }
    const std::u16string folder = platform::WithNativeSeparators(board.options.folder + u"finish\\");
    if (HasLeftOver(board.leftOver)) text += u"Listed in " + folder + std::u16string(kLeftOverName) + u"\n";
    return text + u"Go on with " + folder + u"README.txt\n";
}

}  // namespace tessaly
