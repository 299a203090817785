#include "bonds/BondGeometry.h"
#include "bonds/KytBond.h"
#include "doc/KytFileIO.h"
#include "doc/Numbers.h"
#include "doc/kytstudiodoc.h"
#include "model/KytAtom.h"
#include "model/KytMolecule.h"

#include <QLoggingCategory>
#include <QSet>
#include <QTextStream>

#include <set>

namespace {

Q_LOGGING_CATEGORY(workspaceFile, "kytstudio.workspace")

const QString endOfFile = QStringLiteral("END_KYTFILE");
const QString endOfMolecule = QStringLiteral("END_MOLECULE");

/// Reads one workspace onto a canvas and collects the faults that it finds.
class Reader {
public:
    Reader(QTextStream& stream, KytStudioDoc* doc, bool locked, KytFileIO& io)
        : stream(stream)
        , doc(doc)
        , locked(locked)
        , io(io)
    {
    }

    bool readWorkspace()
    {
        if (word() != QLatin1String("KYTFILE")) {
            reportError("not a workspace: file does not start with KYTFILE");
            return false;
        }
        QString next;
        while ((next = word()) == QLatin1String("MOLECULE"))
            readMolecule();
        if (next == endOfFile) {
            if (io.faults && !word().isEmpty())
                report("text after END_KYTFILE; ignored", true);
            return true;
        }
        reportError(next.isEmpty() ? "unexpected end of file, END_KYTFILE missing"
                                   : "expected MOLECULE or END_KYTFILE; rest of the file ignored");
        return false;
    }

    /// The texts of all errors, each once.
    const std::set<QString>& errors() const { return errorTexts; }

private:
    void readMolecule()
    {
        ended = false;
        molecule = new KytMolecule;
        io.atomsArr.clear();
        io.atomsCount = count();
        io.bondsCount = count();
        for (int i = 0; i < io.atomsCount && !ended; ++i)
            readAtom();
        for (int i = 0; i < io.bondsCount && !ended; ++i) {
            recordKeyword(QLatin1String("BOND"));
            readBond();
        }
        if (ended)
            reportError("molecule has fewer records than declared");
        else
            readFurtherBonds();
        if (io.atomsArr.isEmpty())
            delete molecule;
        io.atomsArr.clear();
    }

    /// Reads up to the END_MOLECULE of the molecule, including any bonds before it. Intentional: the writer declares
    /// half of the number of bond ends, which is too few if a bond leads out of the molecule.
    void readFurtherBonds()
    {
        QString next;
        while (!ended && (next = word()) == QLatin1String("BOND")) {
            reportError("more bonds than declared; additional bond read");
            readBond();
        }
        if (!ended && next != endOfMolecule)
            report("expected END_MOLECULE; word treated as END_MOLECULE", true);
    }

    void readAtom()
    {
        recordKeyword(QLatin1String("ATOM"));
        const QString symbol = ended ? QString() : shared(word());
        const float x = real();
        const float y = real();
        const float z = real();
        const QString red = colorComponent();
        const QString green = colorComponent();
        const QString blue = colorComponent();
        if (ended)
            return;

        auto* atom = new KytAtom(doc->canvas, symbol, z, locked);
        io.atomsArr.append(atom);
        atom->_atomColor[0] = red;
        atom->_atomColor[1] = green;
        atom->_atomColor[2] = blue;
        if (io.offset.isNull())
            atom->move(x, y);
        else
            atom->move(double{x} + io.offset.x(), double{y} + io.offset.y());
        atom->setMolecule(molecule);
        atom->show();
    }

    void readBond()
    {
        const int from = integer();
        const int to = integer();
        const int lines = count();
        if (ended)
            return;
        KytBond* bond = newBond(from, to);
        if (lines == 0)
            report("bond without lines; kept as is");
        for (int i = 0; i < lines && !ended; ++i) {
            const auto kind = static_cast<KytBondType>(integer());
            if (bond && !ended)
                addLine(bond, kind);
        }
    }

    void addLine(KytBond* bond, KytBondType kind)
    {
        const int linesBefore = bond->bondCount;
        bond->addBond(kind, isWedgeKind(kind) ? wedgeAngle(bond) : drawnAngle);
        if (bond->bondCount == linesBefore)
            report("bond cannot take another line or wedge; line or wedge ignored", true);
        else if (!isLineKind(kind) && !isWedgeKind(kind))
            report("unsupported line kind; counted but not drawn, saved as a dashed line", true);
    }

    /// Creates a bond between the atoms with these indices; null if they are invalid.
    KytBond* newBond(int from, int to)
    {
        const qsizetype atoms = io.atomsArr.size();
        if (from < 0 || from >= atoms || to < 0 || to >= atoms) {
            reportError("bond refers to a non-existent atom; bond ignored");
            return nullptr;
        }
        if (from == to) {
            reportError("bond from an atom to itself; bond ignored");
            return nullptr;
        }
        return new KytBond(io.atomsArr[from], io.atomsArr[to], doc);
    }

    static float wedgeAngle(const KytBond* bond)
    {
        const KytAtom* from = bond->getFromAtom();
        const KytAtom* to = bond->getToAtom();
        const double length = pixelDistance({from->x(), from->y()}, {to->x(), to->y()});
        return static_cast<float>(projectionAngle(double{from->getAtomZ()} - to->getAtomZ(), length));
    }

    /// The next word; empty at the end of the stream.
    QString word()
    {
        ++wordsRead;
        QString next;
        stream >> next;
        return next;
    }

    /// The next word of a record. At END_MOLECULE or the end of the stream, sets `ended`; after that, returns an empty
    /// word without reading.
    QString keyword()
    {
        QString next = ended ? QString() : word();
        ended = next.isEmpty() || next == endOfMolecule;
        return next;
    }

    /// Reads the first word of a record; any word is accepted.
    void recordKeyword(QLatin1String expected)
    {
        const QString found = keyword();
        if (!ended && found != expected)
            report("expected ATOM or BOND; word treated as the keyword", true);
    }

    QString colorComponent()
    {
        QString component = keyword();
        const int number = wholeInteger(component).value_or(-1);
        if (!ended && (number < 0 || number > 255))
            report("colour component is not an integer from 0 to 255; kept as is");
        return shared(component);
    }

    /// Shares the memory of equal texts: thousands of atoms have only a few different symbols and colours.
    QString shared(const QString& text) { return *texts.insert(text); }

    int integer()
    {
        const std::optional<int> number = wholeInteger(keyword());
        if (!number && !ended)
            reportError("invalid number; read as 0");
        return number.value_or(0);
    }

    float real()
    {
        const std::optional<float> number = wholeReal(keyword());
        if (!number && !ended)
            reportError("invalid number; read as 0");
        return number.value_or(0);
    }

    int count()
    {
        const int number = integer();
        if (number < 0)
            reportError("negative count; read as 0");
        return std::max(0, number);
    }

    /// Reports a fault that is also logged.
    void reportError(const char* text)
    {
        errorTexts.insert(QString::fromLatin1(text));
        report(text, true);
    }

    void report(const char* text, bool isError = false)
    {
        if (io.faults)
            io.faults->push_back({wordsRead, QString::fromLatin1(text), isError});
    }

    QTextStream& stream;
    KytStudioDoc* doc;
    bool locked;
    KytFileIO& io;
    KytMolecule* molecule = nullptr; // being read
    bool ended = false;              // the molecule has ended
    qint64 wordsRead = 0;
    std::set<QString> errorTexts;
    QSet<QString> texts;
};

} // namespace

bool KytFileIO::readWorkspace(QTextStream& stream, KytStudioDoc* doc, bool locked)
{
    Reader reader(stream, doc, locked, *this);
    const bool complete = reader.readWorkspace();
    for (const QString& error : reader.errors())
        qCWarning(workspaceFile).noquote()
            << (name.isEmpty() ? QStringLiteral("workspace") : name) + QStringLiteral(": ") + error;
    return complete;
}
