// SPDX-License-Identifier: GPL-3.0-or-later
#include "clients/update/version_order.h"

#include <algorithm>

namespace veltrix
{

namespace
{

constexpr qsizetype longestVersion = 64;

bool isDigit(QChar character)
{
    return character >= u'0' && character <= u'9';
}

bool isSeparator(QChar character)
{
    return character.isSpace() || QStringView(u".-_+~:").contains(character);
}

bool isLetter(QChar character)
{
    return !isDigit(character) && !isSeparator(character);
}

struct Component {
    bool isNumber = true;
    /// Letters, or digits without leading zeros: none for zero.
    QStringView text;
};

QStringView takeWhile(QStringView &rest, bool (*belongs)(QChar))
{
    const auto end = std::find_if_not(rest.begin(), rest.end(), belongs);
    const QStringView taken = rest.first(end - rest.begin());
    rest = rest.sliced(taken.size());
    return taken;
}

/// Removes the next component from `rest`; zero when there is none.
Component takeComponent(QStringView &rest)
{
    takeWhile(rest, isSeparator);
    if (rest.isEmpty())
        return {};
    if (!isDigit(rest.front()))
        return {false, takeWhile(rest, isLetter)};
    takeWhile(rest, [](QChar character) { return character == u'0'; });
    return {true, takeWhile(rest, isDigit)};
}

std::weak_ordering compareComponents(const Component &one, const Component &other)
{
    if (one.isNumber != other.isNumber)
        return one.isNumber ? std::weak_ordering::greater : std::weak_ordering::less;
    if (one.isNumber && one.text.size() != other.text.size())
        return one.text.size() <=> other.text.size();
    return one.text.compare(other.text, Qt::CaseInsensitive) <=> 0;
}

} // namespace

bool isMachineVersion(QStringView text)
{
    const auto isAllowed = [](QChar character) {
        return isDigit(character) || (character >= u'a' && character <= u'z') ||
               (character >= u'A' && character <= u'Z') ||
               QStringView(u".-_+~:").contains(character);
    };
    return !text.isEmpty() && text.size() <= longestVersion && isDigit(text.front()) &&
           std::all_of(text.begin(), text.end(), isAllowed);
}

std::weak_ordering compareVersions(QStringView one, QStringView other)
{
    while (!one.isEmpty() || !other.isEmpty()) {
        const Component first = takeComponent(one);
        const Component second = takeComponent(other);
        const std::weak_ordering order = compareComponents(first, second);
        if (order != 0)
            return order;
    }
    return std::weak_ordering::equivalent;
}

QStringView leadingNumbers(QStringView version)
{
    QStringView rest = version;
    QStringView numbers =
        takeWhile(rest, [](QChar character) { return isDigit(character) || character == u'.'; });
    while (numbers.endsWith(u'.'))
        numbers.chop(1);
    return numbers;
}

} // namespace veltrix
