#pragma once

#include "tests/app/TestWindow.h"

/// The working directory of a monkey: copies of the library and the samples, and files of every kind that makes
/// trouble.
class MonkeyFolder {
public:
    MonkeyFolder();
    ~MonkeyFolder();

    /// The path of the file that a number stands for: one that is there, is missing, is broken, or cannot be written.
    QString fileName(int number) const;

    /// A path in here, or in a directory that is not there, made of any text.
    QString anyName(const QString& text) const;

    /// Removes what saving has left behind, if that has become much.
    void tidy() const;

private:
    void writeBrokenFiles() const;

    WorkingFolder folder;
    QStringList names;
};

/// The text that a number stands for: symbols, numbers, words of the file format, nothing, very much, and characters
/// from everywhere.
QString anyText(int number);
