// SPDX-License-Identifier: GPL-3.0-or-later
// Apps for household money and for markets.
#include "sample/themes_english.h"

namespace veltrix::sample
{

namespace
{

constexpr QStringView budgetNames[] = {
    u"{}: Budget & Bills",
    u"Budget Planner – {}",
    u"{} Expense Tracker",
    u"Bill Reminder & Budget: {}",
    u"{}: Money Manager",
    u"Spending Tracker: {}",
    u"{} Envelope Budget",
    u"Family Budget – {}",
    u"{}: Savings Goals",
    u"Debt Payoff Planner: {}",
    u"{}: Subscriptions Tracker",
    u"Split Bills with Friends: {}",
    u"{} Receipt Scanner & Expenses",
    u"Simple Budget: {}",
    u"{}: Net Worth",
    u"Piggy Bank: {} Saving",
    u"{}: Weekly Budget",
    u"Loan Calculator: {}",
};

constexpr QStringView budgetTopics[] = {
    u"budget, budget planner, budgeting, monthly budget",
    u"expense tracker, spending tracker, expenses, receipts",
    u"bill reminder, bills, subscriptions, due dates",
    u"money manager, personal finance, household, family budget",
    u"savings, saving goals, piggy bank, envelope",
    u"debt, loan calculator, payoff, net worth",
    u"split bills, shared expenses, roommates",
};

constexpr QStringView tradingNames[] = {
    u"{}: Stocks & Options Trading",
    u"Stock Market Simulator: {}",
    u"{} Options Trading Signals",
    u"Stock Portfolio Tracker – {}",
    u"{}: Invest in ETFs & Stocks",
    u"Options Calculator: {} Greeks",
    u"{} Forex Trading",
    u"Stock Options Tracker: {}",
    u"{}: Call & Put Options Alerts",
    u"Learn Options Trading: {}",
    u"{} Futures & Commodities",
    u"Stock Screener: {}",
};

constexpr QStringView tradingTopics[] = {
    u"stock options, options trading, call, put, options signals",
    u"stocks, stock market, stock trading, invest, investing",
    u"portfolio tracker, dividends, etf, watchlist",
    u"forex, futures, commodities, charts",
    u"paper trading, simulator, learn trading",
};

} // namespace

Theme budgetTheme()
{
    return {.id = ThemeId::Budget,
            .primary = Genre::Finance,
            .secondary = Genre::Productivity,
            .glyph = Glyph::Coin,
            .topRatings = 5.4,
            .paidShare = 0.12,
            .names = budgetNames,
            .topics = budgetTopics};
}

Theme tradingTheme()
{
    return {.id = ThemeId::Trading,
            .primary = Genre::Finance,
            .secondary = Genre::Business,
            .glyph = Glyph::Candles,
            .topRatings = 5.7,
            .paidShare = 0.04,
            .names = tradingNames,
            .topics = tradingTopics};
}

} // namespace veltrix::sample
