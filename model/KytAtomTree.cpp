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

/// Writes the tree of a molecule. An atom that the walk comes back to through another bond is written once more, and
/// takes up its bonds where the walk stands in them: all before are visited.
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
        if (!walk.hasMet(atom->mark))
            walk.meet(atom->mark, 0);
        path.push_back(atom);
    }

    /// Writes the record of the next bond that has not been visited, and returns the atom behind it; null when there is
    /// none.
    KytAtom* nextNeighbour(KytAtom* atom)
    {
        while (atom->mark.note < atom->getBondCount()) {
            const qsizetype place = atom->mark.note;
            walk.meet(atom->mark, atom->mark.note + 1);
            const bool incoming = place < atom->inList.size();
            const KytBond* bond = incoming ? atom->inList[place] : atom->outList[place - atom->inList.size()];
            KytAtom* neighbour = incoming ? bond->getFromAtom() : bond->getToAtom();
            const std::pair there(atom, neighbour);
            if (!neighbour || visited.contains(there) || visited.contains(std::pair(neighbour, atom)))
                continue;
            stream << (incoming ? bondInWord : bondOutWord) << ' ' << bond->bondCount << '\n';
            visited.insert(there);
            pairs.append(there);
            return neighbour;
        }
        return nullptr;
    }

    QTextStream& stream;
    KytVisitedPairs& pairs;
    QSet<std::pair<KytAtom*, KytAtom*>> visited;
    const GraphWalk walk{GraphWalk::Marks::Atoms}; // notes the place of each atom's next bond
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
    /// An atom whose subtree is being read, and its bond to the atom before it on the path.
    struct Branch {
        KytAtom* atom;
        int lines;
        bool incoming; // seen from the atom before it
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

    /// The number at the start of the next word; what follows it is the next word.
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
