#include "bonds/BondGeometry.h"
#include "bonds/KytBond.h"
#include "doc/Numbers.h"
#include "doc/kytstudiodoc.h"
#include "model/KytAtom.h"

#include <QSet>
#include <QTextStream>

#include <algorithm>
#include <limits>
#include <vector>

namespace {

const QString atomWord = QStringLiteral("ATOM");
const QString bondInWord = QStringLiteral("BOND_IN");
const QString bondOutWord = QStringLiteral("BOND_OUT");
const QString endWord = QStringLiteral("END");

/// Writes a molecule as a tree. An atom that is reached again through another bond is written again and continues with
/// its first bond that has not been visited.
class TreeWriter {
public:
    TreeWriter(QTextStream& stream, KytVisitedPairs& pairs)
        : stream(stream)
        , pairs(pairs)
        , visited(pairs.begin(), pairs.end())
    {
    }

    void write(KytAtom* start)
    {
        enter(start);
        while (!path.empty()) {
            KytAtom* atom = path.back();
            if (KytAtom* neighbour = nextNeighbour(atom)) {
                enter(neighbour);
            } else {
                stream << endWord << '\n';
                path.pop_back();
            }
        }
    }

private:
    void enter(KytAtom* atom)
    {
        stream << atomWord << ' ' << shortReal(atom->x()) << ' ' << shortReal(atom->y()) << '\n';
        if (!walk.hasVisited(atom->mark))
            walk.visit(atom->mark, 0);
        path.push_back(atom);
    }

    /// Writes the record of the next bond that has not been visited and returns the atom at its other end; null if
    /// there is none.
    KytAtom* nextNeighbour(KytAtom* atom)
    {
        while (atom->mark.value < atom->getBondCount()) {
            const qsizetype index = atom->mark.value;
            walk.visit(atom->mark, atom->mark.value + 1);
            const bool incoming = index < atom->inList.size();
            const KytBond* bond = incoming ? atom->inList[index] : atom->outList[index - atom->inList.size()];
            KytAtom* neighbour = incoming ? bond->getFromAtom() : bond->getToAtom();
            const std::pair visit(atom, neighbour);
            if (!neighbour || visited.contains(visit) || visited.contains(std::pair(neighbour, atom)))
                continue;
            stream << (incoming ? bondInWord : bondOutWord) << ' ' << bond->bondCount << '\n';
            visited.insert(visit);
            pairs.append(visit);
            return neighbour;
        }
        return nullptr;
    }

    QTextStream& stream;
    KytVisitedPairs& pairs;
    QSet<std::pair<KytAtom*, KytAtom*>> visited;
    const GraphWalk walk{GraphWalk::Marks::Atoms}; // the value is the index of the atom's next bond
    std::vector<KytAtom*> path;
};

/// Reads the tree of a molecule onto a canvas.
class TreeReader {
public:
    TreeReader(QTextStream& stream, KytMolecule* molecule, KytStudioDoc* doc)
        : stream(stream)
        , molecule(molecule)
        , doc(doc)
    {
    }

    void read(KytAtom* start)
    {
        enter({start, 0, false});
        while (!path.empty()) {
            const QString next = word();
            if (next == bondInWord || next == bondOutWord) {
                const int lines = integer();
                enter({new KytAtom(doc->canvas, 0.0F, false), lines, next == bondInWord});
            } else {
                leave();
            }
        }
    }

private:
    /// An atom whose subtree is being read, and its bond to its parent on the path.
    struct Branch {
        KytAtom* atom;
        int lines;
        bool incoming; // as seen from the parent
    };

    void enter(const Branch& branch)
    {
        path.push_back(branch);
        word(); // the keyword of the atom's record
        const int x = integer();
        const int y = integer();
        branch.atom->move(x, y);
        branch.atom->setMolecule(molecule);
    }

    void leave()
    {
        const Branch branch = path.back();
        path.pop_back();
        if (path.empty())
            return;
        KytAtom* parent = path.back().atom;
        branch.atom->show();
        auto* bond = branch.incoming ? new KytBond(branch.atom, parent, doc) : new KytBond(parent, branch.atom, doc);
        for (int i = 0; i < branch.lines && branch.lines <= 3; ++i)
            bond->addBond(KYTBT_SingleBond, drawnAngle);
    }

    QString word()
    {
        QString next;
        stream >> next;
        return next;
    }

    /// The integer at the start of the next word; the rest of the word becomes the next word.
    int integer()
    {
        qlonglong number = 0;
        stream >> number;
        return static_cast<int>(
            std::clamp<qlonglong>(number, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
    }

    QTextStream& stream;
    KytMolecule* molecule;
    KytStudioDoc* doc;
    std::vector<Branch> path;
};

} // namespace

void KytAtom::writeMoleculeToFile(QTextStream* stream, KytVisitedPairs* visited)
{
    TreeWriter(*stream, *visited).write(this);
}

void KytAtom::readMoleculeFromFile(QTextStream* stream, KytMolecule* readMolecule, KytStudioDoc* doc)
{
    const int base = stream->integerBase();
    stream->setIntegerBase(10);
    TreeReader(*stream, readMolecule, doc).read(this);
    stream->setIntegerBase(base);
}
