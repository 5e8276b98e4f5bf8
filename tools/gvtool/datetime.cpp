// gvtool date and gvtool money.
#include <cstdlib>
#include <memory>
#include <regex>

#include "gvtool/answer.h"
#include "gvtool/commands.h"
#include "gvtool/describe.h"
#include "gvtool/encoding.h"

namespace gvtool {
namespace {

constexpr const char* kOutOfTime = "the date lies outside the 32-bit time range (1970-01-01 to 2038-01-19)";

// Fields past their calendar range are carried over by the runtime (month 13
// is January of the next year), which the user did not necessarily mean.
void CheckFields(std::vector<uint16_t> const& f) {
    static const uint16_t kMost[6] = {65535, 12, 31, 23, 59, 59};
    static const char* const kNames[6] = {"year", "month", "day", "hour", "minute", "second"};
    for (size_t i = 1; i < f.size() && i < 6; ++i)
        if (f[i] > kMost[i] || (i <= 2 && f[i] == 0))
            Doubtful(std::string(kNames[i]) + " " + std::to_string(f[i]) +
                     " is out of range: it is carried over into the next field");
}

CGVDate DateOf(std::vector<uint16_t> const& f) {
    CheckFields(f);
    if (f.size() == 3)
        return CGVDate(f[0], f[1], f[2]);
    if (f.size() == 6)
        return CGVDate(f[0], f[1], f[2], f[3], f[4], f[5]);
    throw Failure{"a date is YEAR MONTH DAY [HOUR MINUTE SECOND]"};
}

void PrintText(CGVDate& d) {
    struct Form {
        const char* name;
        void (CGVDate::*member)(CGVString&);
    } const forms[] = {
        {"date", &CGVDate::mDate2Str},         {"time", &CGVDate::mTime2Str},
        {"date-time", &CGVDate::mDateTime2Str}, {"day", &CGVDate::mGetDayStr},
        {"month", &CGVDate::mGetMonthStr},     {"month-date", &CGVDate::mGetMonthDateStr},
        {"year", &CGVDate::mGetYearStr},       {"week-day", &CGVDate::mGetWeekDayStr},
        {"day-plan", &CGVDate::mGetDayPlanStr},
    };
    std::vector<std::pair<std::string, std::string>> fields;
    bool empty = false;
    for (Form const& form : forms) {
        CGVString text;
        (d.*form.member)(text);
        empty = empty || text.GetLength() == 0;
        fields.emplace_back(form.name, text.GetString());
    }
    PrintFields(fields);
    if (empty)
        Doubtful(std::string(kOutOfTime) + ": its texts are empty");
}

// The amount as the library reads it (strtod, up to the first character that
// cannot continue a number), with a warning where that is not what was written.
CGVMoney Amount(std::string const& text) {
    static const std::regex plain(R"(\s*[+-]?(\d+(\.\d{0,2})?|\.\d{1,2})\s*)");
    CGVMoney amount{CGVString(text.c_str())};
    double value = std::strtod(text.c_str(), nullptr);
    if (!std::regex_match(text, plain))
        Doubtful("'" + text + "' is read as " + static_cast<CGVString>(amount).GetString() +
                 ": an amount is digits with at most two decimals after a full stop");
    if (value < -21474836.48 || value > 21474836.47)
        Doubtful("'" + text + "' is outside -21474836.48 to 21474836.47, where hundredths fit 32 bits");
    return amount;
}

// The exact result in hundredths, to tell when the 32-bit arithmetic wrapped.
void CheckRange(long long hundredths) {
    if (hundredths < INT32_MIN || hundredths > INT32_MAX)
        Doubtful("the result is outside -21474836.48 to 21474836.47: the 32-bit arithmetic wrapped");
}

long long Hundredths(CGVMoney const& m) {
    return static_cast<long long>(m.mGetWholeAmount()) * 100 + m.mGetFractionalAmount();
}

}  // namespace

void AddDate(CLI::App& app) {
    auto* cmd = app.add_subcommand("date", "Week numbers, text forms and fields of a date");
    cmd->require_subcommand(1);
    static std::vector<uint16_t> fields;
    static int32_t seconds = 0;
    auto* week = cmd->add_subcommand("week", "The week of the year of a date");
    week->add_option("FIELDS", fields, "YEAR MONTH DAY, such as 2024 3 5")->required()->expected(3);
    week->callback([] {
        CGVDate d = DateOf(fields);
        PrintNumber(d.mWeekOf());
        CGVString text;
        d.mDate2Str(text);
        if (text.GetLength() == 0)
            Doubtful(std::string(kOutOfTime) + ": the week means nothing");
    });
    auto* text = cmd->add_subcommand("text", "Every text form of a date");
    text->add_option("FIELDS", fields, "YEAR MONTH DAY [HOUR MINUTE SECOND], such as 2024 3 5 14 7 9")
        ->required()
        ->expected(3, 6);
    text->add_flag("--json", JsonOutput(), "Print the forms as one JSON object");
    text->callback([] {
        CGVDate d = DateOf(fields);
        PrintText(d);
    });
    auto* parts = cmd->add_subcommand("parts", "The fields of a 32-bit time value (seconds since 1970)");
    parts->add_option("SECONDS", seconds, "Seconds since 1970-01-01 00:00:00 UTC, a 32-bit number")->required();
    parts->add_flag("--json", JsonOutput(), "Print the fields as one JSON object");
    parts->callback([] {
        CGVDate d;
        d = seconds;
        if (seconds < 0)
            Doubtful("a time value before 1970 has no fields");
        PrintFields({{"date", Describe(d).substr(5)},
                     {"week-day", std::to_string(d.mGetDayOfWeek())},
                     {"week", std::to_string(d.mWeekOf())}});
    });
}

void AddMoney(CLI::App& app) {
    auto* cmd = app.add_subcommand("money", "Money arithmetic in whole units and hundredths: A [+|-|*|/ B]");
    static std::vector<std::string> expr;
    cmd->add_option("EXPR", expr,
                    "An amount such as 10.50, optionally followed by + or - and an amount, or by * or / and a "
                    "whole number")
        ->required()
        ->expected(1, 3);
    cmd->add_flag("--json", JsonOutput(), "Print the result as a JSON string");
    cmd->callback([] {
        if (expr.size() == 2)
            throw Failure{"an operator needs an operand"};
        CGVMoney left = Amount(expr[0]);
        if (expr.size() == 1) {
            PrintText(static_cast<CGVString>(left));
            return;
        }
        std::string const& op = expr[1];
        std::unique_ptr<CGVMoney> result;
        if (op == "+" || op == "-") {
            CGVMoney right = Amount(expr[2]);
            result.reset(&(op == "+" ? left + right : left - right));
            CheckRange(op == "+" ? Hundredths(left) + Hundredths(right) : Hundredths(left) - Hundredths(right));
        } else if (op == "*" || op == "/" || op == "x") {
            char* end = nullptr;
            long long factor = std::strtoll(expr[2].c_str(), &end, 10);
            if (expr[2].empty() || *end != '\0' || factor < INT32_MIN || factor > INT32_MAX)
                throw Failure{"the operand of " + op + " is a whole number, not '" + expr[2] + "'"};
            if (op == "/" && factor == 0)
                throw Failure{"division by 0"};
            CheckRange(op == "/" ? Hundredths(left) / factor : Hundredths(left) * factor);
            result.reset(&(op == "/" ? left / static_cast<int32_t>(factor) : left * static_cast<int32_t>(factor)));
        } else {
            throw Failure{"unknown operator " + op + " (use + - * /)"};
        }
        PrintText(static_cast<CGVString>(*result));
    });
}

}  // namespace gvtool
