#include "tests/monkey/Step.h"

#include <QStringList>

#include <algorithm>

namespace {

const std::array<QString, stepKinds> names = {
    QStringLiteral("press"),    QStringLiteral("doubleclick"), QStringLiteral("move"),       QStringLiteral("release"),
    QStringLiteral("wheel"),    QStringLiteral("contextmenu"), QStringLiteral("enter"),      QStringLiteral("leave"),
    QStringLiteral("mode"),     QStringLiteral("action"),      QStringLiteral("toolbutton"), QStringLiteral("menubar"),
    QStringLiteral("shortcut"), QStringLiteral("fixedvalues"), QStringLiteral("scroll"),     QStringLiteral("resize"),
    QStringLiteral("focus"),    QStringLiteral("windowstate"), QStringLiteral("repaint"),    QStringLiteral("settle"),
    QStringLiteral("tidy"),     QStringLiteral("viewer"),      QStringLiteral("history"),    QStringLiteral("zoom"),
    QStringLiteral("cancel"),   QStringLiteral("type"),        QStringLiteral("select"),     QStringLiteral("transfer"),
};

std::optional<Step> stepFromLine(const QString& line)
{
    const QStringList words = line.split(u' ', Qt::SkipEmptyParts);
    const auto* const name = std::find(names.begin(), names.end(), words.value(0));
    Step step;
    if (name == names.end() || words.size() != qsizetype(step.numbers.size()) + 1)
        return std::nullopt;
    step.kind = static_cast<StepKind>(name - names.begin());
    for (std::size_t i = 0; i < step.numbers.size(); ++i) {
        bool isNumber = false;
        step.numbers[i] = words[qsizetype(i) + 1].toInt(&isNumber);
        if (!isNumber)
            return std::nullopt;
    }
    return step;
}

} // namespace

QString nameOf(StepKind kind)
{
    return names.at(static_cast<std::size_t>(kind));
}

QString toText(const Steps& steps)
{
    QString text;
    for (const Step& step : steps) {
        text += nameOf(step.kind);
        for (const int number : step.numbers)
            text += u' ' + QString::number(number);
        text += u'\n';
    }
    return text;
}

std::optional<Steps> stepsFromText(const QString& text)
{
    Steps steps;
    for (const QString& line : text.split(u'\n')) {
        if (line.trimmed().isEmpty() || line.startsWith(u'#'))
            continue;
        const std::optional<Step> step = stepFromLine(line);
        if (!step)
            return std::nullopt;
        steps.append(*step);
    }
    return steps;
}
