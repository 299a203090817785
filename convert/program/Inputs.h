#pragma once

#include "convert/program/Options.h"

#include <functional>
#include <optional>

/// A record and where it comes from.
struct InputRecord {
    std::size_t input = 0; ///< index of the file in Options::inputs
    Record record;
};

/// An input that cannot be opened.
class UnreadableInput : public ConversionError {
public:
    using ConversionError::ConversionError;
};

/// Takes the records of all inputs one after the other. gzip files are decompressed, whatever their names.
class Inputs {
public:
    /// `options` must outlive this object. Throws ConversionError if the format of an input is unknown.
    explicit Inputs(const Options& options);
    ~Inputs();
    Inputs(const Inputs&) = delete;
    Inputs& operator=(const Inputs&) = delete;

    /// The next record; nothing after the last one. Throws ConversionError if the rest of an input cannot be read; the
    /// next call goes on with the next input. Throws UnreadableInput if an input cannot be opened.
    std::optional<InputRecord> next();

    /// Whether next() would return without waiting.
    bool isReady() const;

    /// The file descriptor that next() waits for; -1 if there is none.
    int descriptor() const;

private:
    struct Input;

    const Options& options;
    std::unique_ptr<Input> current;
    std::size_t started = 0; ///< number of inputs
};

/// Calls `act` with each record of all inputs, its format and the name of its file for messages, and `fail` with the
/// message of each ConversionError, also of one that `act` throws. Throws UnreadableInput if an input cannot be opened.
void forEachRecord(const Options& options,
                   const std::function<void(const Record&, const Format&, const QString& name)>& act,
                   const std::function<void(const QString& message)>& fail);

/// The format of an input. Throws ConversionError if it is unknown or can only be written.
const Format& inputFormat(const Options& options, const QString& fileName);

/// The name of an input file for messages.
QString shownName(const QString& fileName);
