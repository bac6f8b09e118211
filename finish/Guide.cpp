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
        {left.attachments, u"attachment has no place, since its post or its row is not known",
         u"attachments have no place, since their posts or their rows are not known"},
        {left.announced, u"file of an announcement is copied and hangs on no post",
         u"files of announcements are copied and hang on no post"},
        {left.longMessages, u"message was too long for one post", u"messages were too long for one post"},
        {left.members, u"member has another name, the old one being too long or like another's",
         u"members have other names, the old ones being too long or like others'"},
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

constexpr std::u16string_view kAfter =
    uR"(When 2 Load.sql has said "loaded", log in to the forum's administration and press these:

1. Tools & Maintenance > Cache Manager: "Rebuild & Reload All".
   Until then the forum shows its old list of forums and groups.

2. Tools & Maintenance > Recount & Rebuild: "Go" beside each of the counters, those of forums, threads,
   posts of users, threads of users and the statistics. They are right for what was loaded; this adds
   what the administrator wrote on the old board, and what else is in the forum.

Then:

- Copy the files of the folder "attachments", which lies beside this folder, into the forum's folder
  "uploads", if that is not done yet. The web server must be able to read them.

- Look over the new groups under Users & Groups: a group of the old board may read and write here, and
  nothing more.

- Tell the members, for example:

The forum has moved. Your account is there under your old user name, with all you wrote. Passwords could
not move: on the page where you log in, follow "Lost password", give the mail address that you had on the
old board, and choose a new one. If that address is out of date, write to us.
)";

// With marks in braces for what differs from board to board.
constexpr std::u16string_view kReadme =
    uR"(From here to a living forum

This folder holds the converted board as a forum of the 1.8 line takes it: {ROWS}.
Nothing in it was loaded anywhere yet. It takes a command line client of the database, "mariadb" or
"mysql", the name, user and password of the forum's database, which stand in inc/config.php of the forum,
and some minutes.
{LEFT}
1. Back up the forum's database, and close the forum in its administration while you work.

2. Copy this folder to a machine from which the database can be reached, and go into it.

3. Ask whether all is ready. This changes nothing:

       mariadb --user=NAME --password --table DATABASE < "1 Check.sql"

   The last line of its table says "ready", or "not ready" and why. The lines above it tell what to do.
   The tables are taken to be named {PREFIX}posts and so on; another prefix is said by --prefix.

4. Load:

       mariadb --user=NAME --password --local-infile=1 DATABASE < "2 Load.sql"

   It ends with "loaded". Or it ends with an error whose text tells what is wrong; then nothing has
   changed, provided that the tables are of an engine with transactions, such as InnoDB. With MyISAM put
   the backup back before you try again.

5. Copy the files of the folder "attachments", which lies beside this one, into the forum's "uploads".

6. Do what "3 After.txt" says.

7. Lead the visitors of the old addresses to the new ones. redirect.nginx.conf and redirect.apache.txt
   have a line for each of {PAGES} pages, the old path and the new address. Use one of them on the server
   that answers under the old name:

   nginx, in the http part of its settings, and the last line in the server part:

       map_hash_max_size 1048576;
       map_hash_bucket_size 512;
       include /FOLDER/redirect.nginx.conf;

       if ($new_address) { return 301 $new_address; }

   Apache, in its settings or those of the virtual host:

       RewriteEngine On
       RewriteMap discus "txt:/FOLDER/redirect.apache.txt"
       RewriteCond ${discus:%{REQUEST_URI}} ^([^?]+)[?]?(.*)$
       RewriteRule ^ %1?%2 [R=301,L,NE]

   The pages of the folder "redirect" beside this one do the same by a page that waits some seconds. With
   the map in force they are not needed: leave them out, or delete them from the old site. Search engines
   follow the map and not the pages.

8. Open the forum. When visitors find what they look for, this folder may go.

The passwords of the old board fit no other forum. Each member has a random one that nobody knows and asks
for a new one by mail; "3 After.txt" has a text for them. Those who wrote without being members have
accounts without a mail address, which nobody can enter.
)";

void WriteLines(std::u16string_view folder, std::u16string_view name, std::u16string text) {
    ReplaceAllExactly(text, u"\n", u"\r\n");
    TextFile file(std::u16string(folder) + std::u16string(name), OpenMode::kWriting, TextFormat::kUtf8);
    file.Write(text);
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

std::u16string ReadmeText(const Board& board, const std::vector<TableSummary>& tables, std::int64_t pages) {
    std::u16string left;
    if (HasLeftOver(board.leftOver))
        left = u"\nWhat could not come over as it was stands in \"" + std::u16string(kLeftOverName) +
               u"\". Read that first.\n";
    std::u16string text(kReadme);
    ReplaceAllExactly(text, u"{ROWS}", RowsText(tables));
    ReplaceAllExactly(text, u"{LEFT}", left);
    ReplaceAllExactly(text, u"{PREFIX}", board.options.prefix);
    ReplaceAllExactly(text, u"{PAGES}", ToText(pages));
    return text;
}

}  // namespace

void WriteGuide(const Board& board, const std::vector<TableSummary>& tables, std::int64_t pages,
                std::u16string_view folder) {
    WriteLines(folder, u"README.txt", ReadmeText(board, tables, pages));
    WriteLines(folder, u"3 After.txt", std::u16string(kAfter));
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
