#include "convert/formats/Records.h"

namespace {

class FileReader : public RecordReader {
public:
    using RecordReader::RecordReader;

    std::optional<Record> next() override
    {
        if (isDone)
            return std::nullopt;
        isDone = true;
        Record record;
        record.text = lines.takeAll(maxFileSize);
        return record;
    }

private:
    bool isDone = false;
};

} // namespace

std::unique_ptr<RecordReader> wholeFile(LineReader& lines, const InputStyle&)
{
    return std::make_unique<FileReader>(lines);
}
