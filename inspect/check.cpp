#include <optional>
#include <string>
#include <string_view>

#include <platen/inspect.h>
#include "inspect/config_rules.h"
#include "inspect/finding_list.h"
#include "inspect/parameters_rules.h"
#include "inspect/printer_rules.h"
#include "inspect/rewriting.h"
#include "inspect/table_rules.h"

namespace platen {
namespace {

void checkContent(const PiaInput& input, const Content& content, const CheckSettings& settings,
                  FindingList& findings) {
    if (content.table) {
        checkTable(*content.table, input.container().kind, findings);
    }
    if (content.config) {
        checkConfig(input, content, findings);
        if (settings.printers != nullptr) {
            checkPrinter(*content.config, *settings.printers, findings);
        }
    }
    if (content.parameters) {
        checkParameters(input, *content.parameters, findings);
    }
}

}  // namespace

CheckResult checkInput(PiaInput& input, const std::wstring& file, const CheckSettings& settings) {
    const bool opened = input.root() != nullptr;
    const Content content = opened ? readContent(input, file, settings.reading) : Content();
    FindingList findings(settings.mostFindings);
    findings.addWarnings(input.report());
    if (input.report().failure()) {
        findings.add(*input.report().failure(), Severity::Error);
    }
    if (!opened) {
        return findings.take(std::nullopt);
    }
    checkContent(input, content, settings, findings);
    checkRewriting(input, findings);
    findings.locate(input);
    return findings.take(content.kind);
}

CheckResult check(const std::wstring& file, const CheckSettings& settings) {
    PiaInput input;
    static_cast<void>(input.open(file.c_str(), settings.reading));
    return checkInput(input, file, settings);
}

CheckResult checkBytes(std::string_view bytes, const std::wstring& file,
                       const CheckSettings& settings) {
    PiaInput input;
    static_cast<void>(input.openBytes(bytes, settings.reading));
    return checkInput(input, file, settings);
}

}  // namespace platen
