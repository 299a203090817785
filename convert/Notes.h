#pragma once

#include <QString>
#include <QStringList>

#include <stdexcept>
#include <utility>
#include <vector>

/// What a conversion could not carry over: kinds of things, each with how many there were.
class Notes {
public:
    /// Adds `count` things of the kind; nothing for 0.
    void add(const QString& kind, qsizetype count = 1);

    /// One line for each kind, in the order in which they first came: how many, and what.
    QStringList lines() const;

private:
    std::vector<std::pair<QString, qsizetype>> kinds;
};

/// Input that cannot be read, or output that cannot be made. The text is one line for the user, with the place.
class ConversionError : public std::runtime_error {
public:
    explicit ConversionError(const QString& text);
    QString text() const { return QString::fromUtf8(what()); }
};
