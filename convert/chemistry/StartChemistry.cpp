#include "convert/chemistry/StartChemistry.h"

#include "convert/chemistry/ParserReason.h"

#include <RDGeneral/RDLog.h>

#include <clocale>

void startChemistry()
{
    boost::logging::disable_logs("rdApp.*");
    captureParserLog();
    std::setlocale(LC_NUMERIC, "C");
}
