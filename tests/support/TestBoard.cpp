#include "tests/support/TestBoard.h"

#include "control/Settings.h"
#include "control/cmdConvert.h"

namespace tessaly::testing {

namespace {

void Put(std::u16string& variable, TextField& field, const std::u16string& text) {
    variable = text;
    field.SetText(text);
}

}  // namespace

TestBoard::TestBoard() {
    folder.MakeFolder("source/discus/messages");
    folder.MakeFolder("source/discus_admin_1/secure");
    folder.Write("program/Docs/Redirect.html",
                 "<title>CCCCC</title><p>AAAAA BBBBB XXXXX <a href=\"ZZZZZ\">go</a>");
    folder.Write("program/Docs/utf-8.txt", "&auml;\t\xC3\xA4\t&#228;\r\n");
    state.ShowMessage = [this](std::u16string_view text) { messages.emplace_back(text); };
    state.SetFocus = [this](TextField& field) { focused.push_back(&field); };
    state.ProgramFolder = folder.Path("program");
    state.ProgramName = u"tessaly-test";
    Form_Load(state);
    Put(state.DiscusRootFolder, state.txtDiscusRootFolder, folder.Path("source") + u"\\");
    Put(state.DiscusMessageFolder, state.txtDiscusMessageFolder,
        folder.Path("source/discus/messages") + u"\\");
    Put(state.DiscusSecureMessageFolder, state.txtDiscusSecureMessageFolder,
        folder.Path("source/discus_admin_1/secure") + u"\\");
    Put(state.DiscusMainFolder, state.txtDiscusMainFolder, folder.Path("source/discus_admin_1") + u"\\");
    Put(state.mybbOutputFolder, state.txtmybbOutputFolder, folder.Path("output") + u"\\");
    state.mybbAttachmentsFolder = state.mybbOutputFolder + u"attachments";
    state.txtDiscusWebsite.SetText(u"http://old.example/discus");
    state.DiscusWebsite = state.txtDiscusWebsite.Text;
    state.txtmybbForumAddr.SetText(u"http://new.example/");
    state.mybbForumAddr = state.txtmybbForumAddr.Text;
    state.txtDefaultAdmin.SetText(u"Admin");
    state.DefaultAdmin = u"Admin";
    state.txtDefaultUsers.SetText(u"1");
    state.DefaultUserCount = 1;
}

void TestBoard::WriteBoardFile(std::string_view bytes) const {
    folder.Write("source/discus/messages/board-topics.html", bytes);
}

void TestBoard::WritePage(std::string_view name, std::string_view bytes) const {
    folder.Write("source/discus/messages/" + std::string(name), bytes);
}

void TestBoard::WriteSecurePage(std::string_view name, std::string_view bytes) const {
    folder.Write("source/discus_admin_1/secure/" + std::string(name), bytes);
}

void TestBoard::WriteMembers(std::string_view bytes) const {
    folder.Write("source/discus_admin_1/users.txt", bytes);
}

void TestBoard::Convert() {
    cmdConvert_Click(state);
}

std::string TestBoard::Output(std::string_view name) const {
    return folder.Read("output/" + std::string(name));
}

bool TestBoard::HasOutput(std::string_view name) const {
    return folder.Exists("output/" + std::string(name));
}

std::u16string TestBoard::Log() const {
    return FromUtf16(Output("Log.txt"));
}

std::vector<std::string> TestBoard::Rows(std::string_view name) const {
    std::vector<std::string> rows = Lines(Output(name));
    if (!rows.empty() && rows.back().empty()) rows.pop_back();
    return rows;
}

std::string PageHead(std::string_view topic, std::string_view me, std::string_view title,
                     std::string_view subject) {
    return "<html><head><title>" + std::string(title) + "</title></head>\n<!--Topic: " + std::string(topic) +
           "-->\n<!--Me: " + std::string(me) +
           "-->\n<a href=\"http://old.example/discus/messages/1/1.html?99\">" + std::string(subject) +
           "</a>\n";
}

std::string Post(int number, std::string_view name, std::string_view time, std::string_view body) {
    const std::string tag = "Post: " + std::to_string(number) + "-->";
    return "<!--" + tag + "<!--Time: " + std::string(time) + "-->\n<!--name-->" + std::string(name) +
           "<!--/name-->\n<!--Text-->" + std::string(body) + "<!--/Text-->\n<!--/" + tag + "\n";
}

std::string Top(int number, std::string_view address, std::string_view text) {
    return "<!--Top: " + std::to_string(number) + "--><a href=\"" + std::string(address) + "?99\">" +
           std::string(text) + "</a><!--/Top-->\n";
}

std::string BoardFile(std::string_view category, const std::vector<int>& tops) {
    std::string text =
        "<!--Category: 1--><!--Text-->" + std::string(category) + "<!--/Text--><!--/Category-->\n";
    for (const int top : tops) text += "<!--Top: " + std::to_string(top) + "-->board<!--/Top-->\n";
    return text;
}

}  // namespace tessaly::testing
