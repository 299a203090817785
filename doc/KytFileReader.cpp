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

/// Reads one workspace onto a canvas, and remembers what kinds of trouble it met.
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
            meet("not a workspace: it does not begin with KYTFILE");
            return false;
        }
        QString next;
        while ((next = word()) == QLatin1String("MOLECULE"))
            readMolecule();
        if (next == endOfFile) {
            if (io.faults && !word().isEmpty())
                note("text behind END_KYTFILE; it is not read", true);
            return true;
        }
        meet(next.isEmpty() ? "it ends before END_KYTFILE" : "something other than a molecule; the rest is not read");
        return false;
    }

    const std::set<QString>& troubles() const { return met; }

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
            meet("a molecule ends before the records that it announces");
        else
            readFurtherBonds();
        if (io.atomsArr.isEmpty())
            delete molecule;
        io.atomsArr.clear();
    }

    /// Reads to the closing word of the molecule, and the bonds that stand before it. That these are taken is meant:
    /// the writer announces half of the bonds' ends, which is too few where a bond leaves the molecule.
    void readFurtherBonds()
    {
        QString next;
        while (!ended && (next = word()) == QLatin1String("BOND")) {
            meet("more bonds than announced");
            readBond();
        }
        if (!ended && next != endOfMolecule)
            note("something in place of END_MOLECULE; it is taken for that", true);
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
        atom->move(x, y);
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
            note("a bond without lines");
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
            note("a line or wedge that its bond has no room for; it is left out", true);
        else if (!isLineKind(kind) && !isWedgeKind(kind))
            note("a line of a kind that is not drawn; it is counted, and saved as a dashed one", true);
    }

    /// A bond between the atoms at two indices; null where there can be none.
    KytBond* newBond(int from, int to)
    {
        const qsizetype atoms = io.atomsArr.size();
        if (from < 0 || from >= atoms || to < 0 || to >= atoms) {
            meet("a bond to an atom that is not in its molecule; it is left out");
            return nullptr;
        }
        if (from == to) {
            meet("a bond from an atom to itself; it is left out");
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

    /// The next word, empty at the end of the stream.
    QString word()
    {
        ++wordsRead;
        QString next;
        stream >> next;
        return next;
    }

    /// The next word of a record. Where the molecule's end stands instead, the molecule has ended, and so it is from
    /// then on, without reading further.
    QString keyword()
    {
        QString next = ended ? QString() : word();
        ended = next.isEmpty() || next == endOfMolecule;
        return next;
    }

    /// The word that a record begins with; anything is taken for it.
    void recordKeyword(QLatin1String expected)
    {
        const QString found = keyword();
        if (!ended && found != expected)
            note("something in place of ATOM or BOND; it is taken for that", true);
    }

    QString colorComponent()
    {
        QString component = keyword();
        const int number = wholeInteger(component).value_or(-1);
        if (!ended && (number < 0 || number > 255))
            note("a part of a colour that is no number from 0 to 255");
        return shared(component);
    }

    /// `text` in the memory of an equal one read before: thousands of atoms have a few symbols and colours.
    QString shared(const QString& text) { return *texts.insert(text); }

    int integer()
    {
        const std::optional<int> number = wholeInteger(keyword());
        if (!number && !ended)
            meet("a number that cannot be read; 0 is taken");
        return number.value_or(0);
    }

    float real()
    {
        const std::optional<float> number = wholeReal(keyword());
        if (!number && !ended)
            meet("a number that cannot be read; 0 is taken");
        return number.value_or(0);
    }

    int count()
    {
        const int number = integer();
        if (number < 0)
            meet("a negative count; 0 is taken");
        return std::max(0, number);
    }

    /// Something that the log is to tell, too.
    void meet(const char* trouble)
    {
        met.insert(QString::fromLatin1(trouble));
        note(trouble, true);
    }

    void note(const char* trouble, bool loses = false)
    {
        if (io.faults)
            io.faults->push_back({wordsRead, QString::fromLatin1(trouble), loses});
    }

    QTextStream& stream;
    KytStudioDoc* doc;
    bool locked;
    KytFileIO& io;
    KytMolecule* molecule = nullptr; // the one being read
    bool ended = false;              // it has ended
    qint64 wordsRead = 0;
    std::set<QString> met;
    QSet<QString> texts;
};

} // namespace

bool KytFileIO::readWorkspace(QTextStream& stream, KytStudioDoc* doc, bool locked)
{
    Reader reader(stream, doc, locked, *this);
    const bool complete = reader.readWorkspace();
    for (const QString& trouble : reader.troubles())
        qCWarning(workspaceFile).noquote()
            << (name.isEmpty() ? QStringLiteral("workspace") : name) + QStringLiteral(": ") + trouble;
    return complete;
}
