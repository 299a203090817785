#include "convert/formats/Records.h"

namespace {

class FileReader : public RecordReader {
public:
    FileReader(LineReader& lines, LineReader::Contents contents)
        : RecordReader(lines)
        , contents(contents)
    {
    }

    std::optional<Record> next() override
    {
        if (isDone)
            return std::nullopt;
        isDone = true;
        Record record;
        record.text = lines.takeAll(maxFileSize, contents);
        return record;
    }

private:
    LineReader::Contents contents;
    bool isDone = false;
};

} // namespace

std::unique_ptr<RecordReader> wholeFile(LineReader& lines, const InputStyle&)
{
    return std::make_unique<FileReader>(lines, LineReader::Contents::Text);
}

std::unique_ptr<RecordReader> binaryFile(LineReader& lines, const InputStyle&)
{
    return std::make_unique<FileReader>(lines, LineReader::Contents::Binary);
}
