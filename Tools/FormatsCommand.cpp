#include "Tools/FormatsCommand.h"

#include "OrvImportCae/DataSourceCae.h"
#include "Tools/JsonReports.h"
#include "Tools/Output.h"
#include "Tools/Table.h"

namespace orvapp {

namespace {

std::string whereText(const orv::imp::cae::FormatInfo& format) {
    if (format.module.isEmpty()) {
        return "the library";
    }
    return format.module.toStdString() + (format.isThere ? "" : " (missing)");
}

std::string formatsText(const std::vector<orv::imp::cae::FormatInfo>& formats) {
    Table table({{"Format"}, {"Extensions"}, {"Read by"}, {"What becomes of it"}});
    for (const orv::imp::cae::FormatInfo& format : formats) {
        table.addRow({format.name.toStdString(), format.extensions.toStdString(), whereText(format),
                      format.contents.toStdString()});
    }
    return table.text();
}

} // namespace

std::vector<orv::imp::cae::FormatInfo> readableFormats() {
    std::vector<orv::imp::cae::FormatInfo> formats = {
        {"OrvApp", "Our own, with several cases", "ztfx", "everything, of any number of cases", "", true},
        {"OrvApp text", "Our own, as text", "ztf", "everything, of one case", "", true},
    };
    const std::vector<orv::imp::cae::FormatInfo> others = orv::imp::cae::DataSourceCae::formats();
    formats.insert(formats.end(), others.begin(), others.end());
    return formats;
}

void runFormats(const FormatsOptions& options) {
    writeStandardOutput(options.json ? formatsJson(readableFormats()) : formatsText(readableFormats()));
}

} // namespace orvapp
