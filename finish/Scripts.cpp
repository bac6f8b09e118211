#include "finish/Scripts.h"

#include <algorithm>

#include "text/numbers.h"
#include "text/search.h"

namespace tessaly {

namespace {

using platform::OpenMode;
using platform::TextFile;
using platform::TextFormat;

// A table as the scripts speak of it.
struct Speech {
    std::u16string_view table;
    std::u16string_view key;
    std::u16string_view numbers;  // what its numbers are called
    std::u16string_view remedy;   // how to get others
};

constexpr Speech kSpeeches[] = {
    {u"usergroups", u"gid", u"group numbers", u"convert again with a higher --groups"},
    {u"users", u"uid", u"member numbers", u"convert again with a higher --users"},
    {u"forums", u"fid", u"forum numbers", u"finish again with a higher --first-forum"},
    {u"threads", u"tid", u"thread numbers", u"finish again with a higher --first-thread"},
    {u"posts", u"pid", u"post numbers", u"finish again with a higher --first-post"},
    {u"attachments", u"aid", u"attachment numbers",
     u"finish again with a higher --first-post, from which attachments count as well"},
};

// Announcements are numbered behind those that are there already.
constexpr std::u16string_view kAnnouncements = u"announcements";

const Speech* SpeechOf(const TableSummary& table) {
    for (const Speech& speech : kSpeeches) {
        if (speech.table == table.table) return &speech;
    }
    return nullptr;
}

std::u16string Quoted(std::u16string_view text) {
    std::u16string quoted(text);
    ReplaceAll(quoted, u"\\", u"\\\\");
    ReplaceAll(quoted, u"'", u"''");
    return u"'" + quoted + u"'";
}

std::u16string Variable(std::u16string_view what, std::u16string_view table) {
    return u"@" + std::u16string(what) + u"_" + std::u16string(table);
}

class Script {
  public:
    Script(std::u16string_view folder, std::u16string_view name, std::u16string_view prefix)
        : file_(std::u16string(folder) + std::u16string(name), OpenMode::kWriting, TextFormat::kUtf8),
          prefix_(prefix) {}

    void Line(std::u16string_view line = {}) { Line({line, u""}); }

    // A line of several pieces.
    void Line(std::initializer_list<std::u16string_view> pieces) {
        for (const std::u16string_view piece : pieces) file_.Write(piece);
        file_.Write(u"\n");
    }

    std::u16string Name(std::u16string_view table) const {
        return u"`" + prefix_ + std::u16string(table) + u"`";
    }

    std::u16string BareName(std::u16string_view table) const {
        return Quoted(prefix_ + std::u16string(table));
    }

    void Close() { file_.Close(); }

  private:
    TextFile file_;
    std::u16string prefix_;
};

void Begin(Script& script) {
    script.Line(u"SET NAMES utf8mb4;");
    script.Line(
        u"SET SESSION sql_mode = 'STRICT_ALL_TABLES,NO_AUTO_VALUE_ON_ZERO', "
        u"SESSION group_concat_max_len = 100000;");
    script.Line();
}

// How many of a table's rows have the numbers that are wanted.
std::u16string CountOf(const Script& script, const TableSummary& table, const Speech& speech) {
    const std::u16string key(speech.key);
    return u"(SELECT COUNT(*) FROM " + script.Name(table.table) + u" WHERE " + key + u" BETWEEN " +
           ToText(table.firstNumber) + u" AND " + ToText(table.lastNumber) + u")";
}

// Runs a statement that is put together from text.
void RunStep(Script& script, std::u16string_view text) {
    script.Line({u"SET @step = ", text, u";"});
    script.Line(u"PREPARE tessaly_step FROM @step;");
    script.Line(u"EXECUTE tessaly_step;");
    script.Line(u"DEALLOCATE PREPARE tessaly_step;");
}

// Asks of a column that may not be there, which only a statement in a text may do.
void AskColumn(Script& script, std::u16string_view table, std::u16string_view column,
               std::u16string_view text) {
    RunStep(script,
            u"IF(EXISTS (SELECT 1 FROM information_schema.COLUMNS WHERE TABLE_SCHEMA = DATABASE() AND "
            u"TABLE_NAME = " +
                script.BareName(table) + u" AND COLUMN_NAME = " + Quoted(column) + u"), " +
                std::u16string(text) + u", 'DO 0')");
}

void CountTakenNumbers(Script& script, const std::vector<TableSummary>& tables) {
    script.Line(u"-- Numbers that are in use already.");
    for (const TableSummary& table : tables) {
        const Speech* const speech = SpeechOf(table);
        if (speech == nullptr) continue;
        const std::u16string taken = Variable(u"taken", table.table);
        script.Line({u"SET ", taken, u" = 0;"});
        if (table.rows > 0)
            AskColumn(script, table.table, speech->key,
                      Quoted(u"SET " + taken + u" = " + CountOf(script, table, *speech)));
    }
    script.Line();
}

// The collation of the column of names, or the one of all characters that compares most like it.
void FindCollation(Script& script) {
    script.Line(u"SET @collation = 'utf8mb4_general_ci';");
    script.Line(
        u"SELECT IF(c.CHARACTER_SET_NAME = 'utf8mb4', c.COLLATION_NAME, COALESCE(o.COLLATION_NAME, "
        u"@collation))");
    script.Line(u"FROM information_schema.COLUMNS AS c LEFT JOIN information_schema.COLLATIONS AS o");
    script.Line(
        u"  ON o.COLLATION_NAME = CONCAT('utf8mb4', SUBSTRING(c.COLLATION_NAME, LOCATE('_', "
        u"c.COLLATION_NAME)))");
    script.Line(u"WHERE c.TABLE_SCHEMA = DATABASE() AND c.TABLE_NAME = " + script.BareName(u"users") +
                u" AND c.COLUMN_NAME = 'username'");
    script.Line(u"INTO @collation;");
}

void CountTakenNames(Script& script, const std::vector<std::u16string>& names) {
    constexpr std::size_t kNamesOfAStatement = 200;
    script.Line(u"-- Names that are in use already, as the database compares names.");
    script.Line(u"SET @taken_names = 0, @names = '';");
    FindCollation(script);
    const std::u16string counting =
        u"SELECT @taken_names + COUNT(*), CONCAT_WS(', ', NULLIF(@names, ''), "
        u"GROUP_CONCAT(CONVERT(username USING utf8mb4) ORDER BY username SEPARATOR ', ')) FROM " +
        script.Name(u"users") + u" WHERE CONVERT(username USING utf8mb4) COLLATE ";
    for (std::size_t from = 0; from < names.size(); from += kNamesOfAStatement) {
        std::u16string list;
        const std::size_t end = std::min(from + kNamesOfAStatement, names.size());
        for (std::size_t at = from; at < end; ++at) list += (at == from ? u"" : u", ") + Quoted(names[at]);
        AskColumn(script, u"users", u"username",
                  u"CONCAT(" + Quoted(counting) + u", @collation, " +
                      Quoted(u" IN (" + list + u") INTO @taken_names, @names") + u")");
    }
    script.Line();
}

std::u16string ReachNumber(Reach reach) {
    if (reach == Reach::kAscii) return u"0";
    return reach == Reach::kSixteenBits ? u"1" : u"2";
}

// One row of the list of what is needed.
std::u16string NeedRow(const Script& script, const TableSummary& table, const ColumnNeed& need) {
    return u"SELECT " + script.BareName(table.table) + u" AS t, '" + std::u16string(need.name) + u"' AS c, " +
           ToText(static_cast<std::int64_t>(need.characters)) + u" AS characters, " +
           ToText(static_cast<std::int64_t>(need.bytes)) + u" AS bytes, " + ReachNumber(need.reach) +
           u" AS reach";
}

void CompareColumns(Script& script, const std::vector<TableSummary>& tables) {
    script.Line(
        u"-- Columns that are missing, too short, or of a charset that lacks characters of the texts.");
    script.Line(u"SELECT COUNT(*) - COUNT(c.COLUMN_NAME),");
    script.Line(u"  GROUP_CONCAT(IF(c.COLUMN_NAME IS NULL, CONCAT(n.t, '.', n.c), NULL) SEPARATOR ', '),");
    const std::u16string tooShort =
        u"n.characters > c.CHARACTER_MAXIMUM_LENGTH OR n.bytes > c.CHARACTER_OCTET_LENGTH";
    const std::u16string lacking =
        u"(n.reach = 2 AND c.CHARACTER_SET_NAME <> 'utf8mb4') OR "
        u"(n.reach = 1 AND c.CHARACTER_SET_NAME NOT LIKE 'utf8%')";
    for (const std::u16string& condition : {tooShort, lacking}) {
        script.Line({u"  COALESCE(SUM(", condition, u"), 0), GROUP_CONCAT(IF(", condition,
                     u", CONCAT(n.t, '.', n.c), NULL) SEPARATOR ', ')", condition == tooShort ? u"," : u""});
    }
    script.Line(u"FROM (");
    bool isFirst = true;
    for (const TableSummary& table : tables) {
        std::vector<ColumnNeed> needs = table.columns;
        for (const Constant& constant : table.constants) needs.push_back({constant.name});
        for (const ColumnNeed& need : needs) {
            script.Line((isFirst ? u"  " : u"  UNION ALL ") + NeedRow(script, table, need));
            isFirst = false;
        }
    }
    script.Line(u") AS n LEFT JOIN information_schema.COLUMNS AS c");
    script.Line(u"  ON c.TABLE_SCHEMA = DATABASE() AND c.TABLE_NAME = n.t AND c.COLUMN_NAME = n.c");
    script.Line(u"INTO @missing, @missing_columns, @short, @short_columns, @lacking, @lacking_columns;");
    script.Line();
}

void SumUp(Script& script) {
    script.Line(u"SET @problems = CONCAT_WS('; ',");
    for (const Speech& speech : kSpeeches) {
        const std::u16string taken = Variable(u"taken", speech.table);
        script.Line(
            {u"  IF(", taken, u" > 0, CONCAT(", taken, u", ' ", speech.numbers, u" are taken'), NULL),"});
    }
    script.Line(u"  IF(@taken_names > 0, CONCAT(@taken_names, ' member names are taken'), NULL),");
    script.Line(u"  IF(@missing > 0, CONCAT(@missing, ' columns are missing'), NULL),");
    script.Line(u"  IF(@short > 0, CONCAT(@short, ' columns are too short'), NULL),");
    script.Line(u"  IF(@lacking > 0, CONCAT(@lacking, ' columns lack characters'), NULL),");
    script.Line(u"  IF(@@local_infile = 0, 'the server takes no LOAD DATA LOCAL', NULL));");
    script.Line();
}

void WriteCheck(Script& script, const std::vector<TableSummary>& tables,
                const std::vector<std::u16string>& memberNames) {
    CompareColumns(script, tables);
    CountTakenNumbers(script, tables);
    CountTakenNames(script, memberNames);
    SumUp(script);
}

// What stands in the way beside numbers: how it is called, how many, which, and what to do.
struct Finding {
    std::u16string_view what;
    std::u16string_view number;
    std::u16string_view which;
    std::u16string_view remedy;
};

constexpr Finding kFindings[] = {
    {u"member names that are taken", u"@taken_names", u"@names",
     u"rename these members of the new forum first"},
    {u"columns that are missing", u"@missing", u"@missing_columns",
     u"see whether prefix and version are right"},
    {u"columns that are too short", u"@short", u"@short_columns", u"lengthen them"},
    {u"columns that lack characters", u"@lacking", u"@lacking_columns", u"turn the tables into utf8mb4"},
    {u"LOAD DATA LOCAL is switched off", u"IF(@@local_infile = 0, 1, 0)", u"''",
     u"have local_infile switched on in the server"},
};

void ShowTakenNumbers(Script& script, const TableSummary& table) {
    const Speech* const speech = SpeechOf(table);
    if (speech == nullptr) return;
    script.Line({u"  SELECT '", speech->numbers, u" that are taken' AS what, ",
                 Variable(u"taken", table.table), u" AS number, '", speech->key, u" ",
                 ToText(table.firstNumber), u" to ", ToText(table.lastNumber), u" are needed' AS which, '",
                 speech->remedy, u"' AS remedy UNION ALL"});
}

// Lists that go on and on are cut, so that the table can be read.
void ShowFinding(Script& script, const Finding& finding) {
    const bool isLast = &finding == std::end(kFindings) - 1;
    script.Line({u"  SELECT '", finding.what, u"', ", finding.number, u", IF(CHAR_LENGTH(", finding.which,
                 u") > 200, CONCAT(LEFT(", finding.which, u", 200), ' ...'), ", finding.which, u"), '",
                 finding.remedy, isLast ? u"'" : u"' UNION ALL"});
}

void ShowCheck(Script& script, const std::vector<TableSummary>& tables) {
    script.Line(u"SELECT what, CAST(number AS UNSIGNED) AS number, which, remedy FROM (");
    for (const TableSummary& table : tables) ShowTakenNumbers(script, table);
    for (const Finding& finding : kFindings) ShowFinding(script, finding);
    script.Line(u") AS found WHERE number > 0");
    script.Line(u"UNION ALL");
    script.Line(u"SELECT IF(@problems = '', 'ready', CONCAT('not ready: ', @problems)), '', '',");
    script.Line(u"  IF(@problems = '', 'go on with 2 Load.sql', 'load nothing yet');");
}

// Goes on, or ends the script by an error that tells why: the database names the column that it does not
// find.
void GoOnOnlyIf(Script& script, std::u16string_view problems, std::u16string_view otherwise,
                std::u16string_view statement) {
    const std::u16string failing(problems);
    RunStep(script, u"IF(" + failing + u" = '', '" + std::u16string(statement) + u"', CONCAT('SELECT `" +
                        std::u16string(otherwise) + u"', LEFT(" + failing + u", 150), '`'))");
    script.Line();
}

std::u16string ColumnList(const TableSummary& table) {
    std::u16string list;
    for (const ColumnNeed& column : table.columns) {
        const bool isNumberOfAnnouncement = table.table == kAnnouncements && list.empty();
        if (!list.empty()) list += u", ";
        list += isNumberOfAnnouncement ? u"@aid" : u"`" + std::u16string(column.name) + u"`";
    }
    return list;
}

std::u16string SetList(const TableSummary& table) {
    if (table.table == kAnnouncements) return u"`aid` = @aid + @last_announcement";
    std::u16string list;
    for (const Constant& constant : table.constants) {
        if (!list.empty()) list += u", ";
        list += u"`" + std::u16string(constant.name) + u"` = " + std::u16string(constant.value);
    }
    return list;
}

void Load(Script& script, const TableSummary& table) {
    script.Line(u"LOAD DATA LOCAL INFILE '" + TableFileName(table.table) + u"' INTO TABLE " +
                script.Name(table.table) + u" CHARACTER SET utf8mb4");
    script.Line(u"FIELDS TERMINATED BY '\\t' ESCAPED BY '\\\\' LINES TERMINATED BY '\\n'");
    script.Line(u"(" + ColumnList(table) + u")");
    const std::u16string set = SetList(table);
    script.Line((set.empty() ? set : u"SET " + set) + u";");
    script.Line();
}

// LOAD DATA LOCAL leaves out with a warning what does not go in.
void CountLoaded(Script& script, const std::vector<TableSummary>& tables) {
    script.Line(u"-- Whether all rows are in. Otherwise none of them stays.");
    script.Line(u"SET @problems = CONCAT_WS('; ',");
    for (const TableSummary& table : tables) {
        const Speech* const speech = SpeechOf(table);
        const std::u16string count =
            speech != nullptr
                ? CountOf(script, table, *speech)
                : u"(SELECT COUNT(*) FROM " + script.Name(table.table) + u" WHERE aid > @last_announcement)";
        const std::u16string_view end = &table == &tables.back() ? u");" : u",";
        if (table.rows == 0) {
            script.Line({u"  NULL", end});
            continue;
        }
        script.Line({u"  IF(", count, u" = ", ToText(table.rows), u", NULL, '", table.table,
                     u" are incomplete')", end});
    }
    script.Line();
}

void WriteLoad(Script& script, const std::vector<TableSummary>& tables) {
    GoOnOnlyIf(script, u"@problems", u"not ready: ", u"DO 0");
    script.Line(u"START TRANSACTION;");
    script.Line(u"SET @last_announcement = (SELECT COALESCE(MAX(aid), 0) FROM " +
                script.Name(kAnnouncements) + u");");
    script.Line();
    for (const TableSummary& table : tables) Load(script, table);
    CountLoaded(script, tables);
    GoOnOnlyIf(script, u"@problems", u"nothing is loaded: ", u"COMMIT");
    std::u16string counts;
    for (const TableSummary& table : tables) {
        if (!counts.empty()) counts += u", ";
        counts += ToText(table.rows) + u" " + std::u16string(table.table);
    }
    script.Line(u"SELECT 'loaded: " + counts + u"' AS result;");
}

}  // namespace

void WriteScripts(std::u16string_view folder, std::u16string_view prefix,
                  const std::vector<TableSummary>& tables, const std::vector<std::u16string>& memberNames) {
    Script check(folder, u"1 Check.sql", prefix);
    check.Line(u"-- Changes nothing. Says whether 2 Load.sql can do its work in this database.");
    Begin(check);
    WriteCheck(check, tables, memberNames);
    ShowCheck(check, tables);
    check.Close();

    Script load(folder, u"2 Load.sql", prefix);
    load.Line(u"-- Loads the seven tables. Run it in the folder in which the text files lie, and once.");
    Begin(load);
    WriteCheck(load, tables, memberNames);
    WriteLoad(load, tables);
    load.Close();
}

}  // namespace tessaly
