// Reads the double-pipe fitting specification file SpecData.xml.
#include "frame/specdata.h"

#include <cmath>
#include <cstdlib>

#include "frame/xmlfile.h"
#include "host/platform/codepage.h"
#include "host/platform/language.h"
#include "qrs_fitting.h"
#include "qrs_kernal.h"

namespace qrs::frame {

using platform::translated;

namespace {

// False unless the attribute is there and is a finite number.
bool readNumber(const pugi::xml_attribute& attribute, double& number) {
    char* end = nullptr;
    const double read = std::strtod(attribute.value(), &end);
    if (end == attribute.value() || *end != '\0' || !std::isfinite(read)) return false;
    number = read;
    return true;
}

bool readFitting(const pugi::xml_node& element, TDoublePipeFitting& fitting) {
    fitting.name = platform::fromUtf8(element.attribute("Name").value());
    if (fitting.name.empty() || !readNumber(element.attribute("Diameter1"), fitting.diameter1) ||
        !readNumber(element.attribute("Diameter2"), fitting.diameter2))
        return false;
    for (const pugi::xml_node node : element.children("Point")) {
        AcGePoint3d point;
        if (!readNumber(node.attribute("X"), point.x) || !readNumber(node.attribute("Y"), point.y)) return false;
        if (const pugi::xml_attribute z = node.attribute("Z"); z && !readNumber(z, point.z)) return false;
        fitting.points.push_back(point);
    }
    return true;
}

}  // namespace

void readDoublePipeFittings(double tolerance) {
    pugi::xml_document document;
    if (!readXmlFile(L"SpecData.xml", "SpecData", document)) return;
    TDoublePipeFittingSpec& specification = TDoublePipeFittingSpec::Current();
    specification.Clear();
    int faulty = 0;
    for (const pugi::xml_node element : document.document_element().child("DblPipeFittingSpec").children("Fitting")) {
        TDoublePipeFitting fitting;
        if (readFitting(element, fitting))
            specification.Add(std::move(fitting), tolerance);
        else
            ++faulty;
    }
    if (faulty > 0)
        QrsExport::PrintRefusal(
            L"%s", translated(L"\nSpecData.xml: fittings without a name or a number, left out: %1\n", faulty).c_str());
}

}  // namespace qrs::frame
