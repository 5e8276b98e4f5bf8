// gvtool date and gvtool money.
#include <iostream>
#include <memory>

#include "gvtool/commands.h"
#include "gvtool/describe.h"

namespace gvtool {
namespace {

CGVDate DateOf(std::vector<uint16_t> const& f) {
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
    for (Form const& form : forms) {
        CGVString text;
        (d.*form.member)(text);
        std::cout << form.name << ": " << text.GetString() << '\n';
    }
}

}  // namespace

void AddDate(CLI::App& app) {
    auto* cmd = app.add_subcommand("date", "Week numbers, text forms and fields of a date");
    cmd->require_subcommand(1);
    static std::vector<uint16_t> fields;
    static int32_t seconds = 0;
    auto* week = cmd->add_subcommand("week", "The week of the year of a date");
    week->add_option("FIELDS", fields, "YEAR MONTH DAY")->required()->expected(3);
    week->callback([] {
        CGVDate d = DateOf(fields);
        std::cout << d.mWeekOf() << '\n';
    });
    auto* text = cmd->add_subcommand("text", "Every text form of a date");
    text->add_option("FIELDS", fields, "YEAR MONTH DAY [HOUR MINUTE SECOND]")->required()->expected(3, 6);
    text->callback([] {
        CGVDate d = DateOf(fields);
        PrintText(d);
    });
    auto* parts = cmd->add_subcommand("parts", "The fields of a 32-bit time value (seconds since 1970)");
    parts->add_option("SECONDS", seconds, "The time value")->required();
    parts->callback([] {
        CGVDate d;
        d = seconds;
        std::cout << Describe(d) << "\nweek-day: " << d.mGetDayOfWeek() << "\nweek: " << d.mWeekOf() << '\n';
    });
}

void AddMoney(CLI::App& app) {
    auto* cmd = app.add_subcommand("money", "Money arithmetic in whole units and hundredths: A [+|-|*|/ B]");
    static std::vector<std::string> expr;
    cmd->add_option("EXPR", expr, "An amount, optionally followed by an operator and an operand")
        ->required()
        ->expected(1, 3);
    cmd->callback([] {
        if (expr.size() == 2)
            throw Failure{"an operator needs an operand"};
        CGVMoney left{CGVString(expr[0].c_str())};
        if (expr.size() == 1) {
            std::cout << static_cast<CGVString>(left).GetString() << '\n';
            return;
        }
        std::string const& op = expr[1];
        std::unique_ptr<CGVMoney> result;
        if (op == "+" || op == "-") {
            CGVMoney right{CGVString(expr[2].c_str())};
            result.reset(&(op == "+" ? left + right : left - right));
        } else if (op == "*" || op == "/" || op == "x") {
            char* end = nullptr;
            long long factor = std::strtoll(expr[2].c_str(), &end, 10);
            if (*end != '\0' || factor < INT32_MIN || factor > INT32_MAX)
                throw Failure{"the operand of " + op + " is a whole number"};
            result.reset(&(op == "/" ? left / static_cast<int32_t>(factor) : left * static_cast<int32_t>(factor)));
        } else {
            throw Failure{"unknown operator " + op + " (use + - * /)"};
        }
        std::cout << static_cast<CGVString>(*result).GetString() << '\n';
    });
}

}  // namespace gvtool
