#include "engine/Captions.h"

#include "text/CountText.h"
#include "text/Strings.h"

namespace vantorin {

RowTexts RowTextsOf(const ConnectionRow& row) {
    RowTexts texts;
    switch (row.status) {
        case ConnectionRow::Status::NotConnected:
            texts.status = "Not Connected.";
            break;
        case ConnectionRow::Status::Connecting:
            texts.status = "Connecting to " + row.about;
            break;
        case ConnectionRow::Status::Downloading:
            texts.status = "Downloading " + row.about;
            break;
        case ConnectionRow::Status::Blank:  // while the finished page is scanned
            break;
    }
    texts.size = row.expected ? FormatByteSize(*row.expected) : "0 KB";
    texts.received = row.received ? Trim(FormatByteSize(*row.received)) : "-";
    return texts;
}

CounterCaptions CaptionsOf(const ShownCounts& counts) {
    return {Trim(FormatThousands(std::to_string(counts.files))) + " Files",
            Trim(FormatThousands(std::to_string(counts.bytes))) + " Bytes",
            std::to_string(counts.queued) + " Files"};
}

std::string StatusLineOf(const CrawlModel& model) {
    switch (model.status) {
        case CrawlStatus::NotConnected:
            return "Not Connected.";
        case CrawlStatus::Downloading:
            return "Downloading Site [" + model.statusSite + "]";
        case CrawlStatus::Downloaded:
            return "Website Downloaded!";
        case CrawlStatus::Cancelled:
            return "Operation Cancelled.";
    }
    return {};
}

}  // namespace vantorin
