#include <utility>

#include <platen/utcore.h>
#include "pia/body_lines.h"
#include "pia/container.h"
#include "pia/file_state.h"

namespace {

constexpr int fileSystemFailure = -2;

/// Notes what does not hold: a failure when it was to be verified, a warning otherwise.
bool note(PiaReport& report, bool verified, PiaFinding finding) {
    if (verified) {
        return report.fail(std::move(finding));
    }
    report.warn(std::move(finding));
    return true;
}

PiaCode codeOf(ut::ZlibEngine::Stop stop) {
    switch (stop) {
        case ut::ZlibEngine::Stop::Truncated:
            return PiaCode::StreamTruncated;
        case ut::ZlibEngine::Stop::TooLarge:
            return PiaCode::BodyTooLarge;
        case ut::ZlibEngine::Stop::None:
        case ut::ZlibEngine::Stop::Corrupt:
            break;
    }
    return PiaCode::StreamCorrupt;
}

}  // namespace

int PiaFileIn::State::open(std::string_view file, const PiaReadOptions& options) {
    if (file.size() < pia_header::size) {
        report.fail({.code = PiaCode::FileTooShort,
                     .offset = file.size(),
                     .expected = std::to_wstring(pia_header::size) + L" bytes",
                     .found = std::to_wstring(file.size())});
        return fileSystemFailure;
    }
    const pia_header::Fields header = pia_header::decode(file);
    container.version = 2;
    container.kind = header.kind;
    container.storedChecksum = header.checksum;
    if (!header.kind &&
        !note(report, options.verifyHeaderText, {.code = PiaCode::HeaderText, .offset = 0})) {
        return fileSystemFailure;
    }

    const std::string_view rest = file.substr(pia_header::size);
    std::size_t consumed = 0;
    auto stop = ut::ZlibEngine::Stop::None;
    const int status = ut::ZlibEngine::decompress(rest, bodyBytes, header.bodyBytes,
                                                  options.limits.bodyBytes, consumed, stop);
    if (status != 0) {
        PiaFinding finding{.code = codeOf(stop), .offset = pia_header::size + consumed};
        if (stop == ut::ZlibEngine::Stop::TooLarge) {
            finding.expected = L"at most " + std::to_wstring(options.limits.bodyBytes) + L" bytes";
        }
        report.fail(std::move(finding));
        return status;
    }
    container.bodyBytes = bodyBytes.size();
    container.compressedBytes = consumed;
    container.actualChecksum = pia_header::checksum(
        file.substr(pia_header::lengthsOffset, pia_header::size - pia_header::lengthsOffset),
        rest.substr(0, consumed));
    if (!verify(header.bodyBytes, header.compressedBytes, rest.size(), options)) {
        return fileSystemFailure;
    }
    startLines();
    return 0;
}

bool PiaFileIn::State::verify(std::uint32_t bodyLength, std::uint32_t compressedLength,
                              std::uint64_t streamRoom, const PiaReadOptions& options) {
    if (bodyLength != container.bodyBytes &&
        !note(report, options.verifyLengths,
              {.code = PiaCode::BodyLength,
               .offset = pia_header::lengthsOffset,
               .expected = std::to_wstring(container.bodyBytes),
               .found = std::to_wstring(bodyLength)})) {
        return false;
    }
    if (compressedLength != container.compressedBytes &&
        !note(report, options.verifyLengths,
              {.code = PiaCode::CompressedLength,
               .offset = pia_header::lengthsOffset + sizeof bodyLength,
               .expected = std::to_wstring(container.compressedBytes),
               .found = std::to_wstring(compressedLength)})) {
        return false;
    }
    if (streamRoom != container.compressedBytes) {
        report.warn({.code = PiaCode::BytesAfterStream,
                     .offset = pia_header::size + container.compressedBytes,
                     .found = std::to_wstring(streamRoom - container.compressedBytes) + L" bytes"});
    }
    return container.checksumHolds() ||
           note(report, options.verifyChecksum,
                {.code = PiaCode::Checksum,
                 .offset = pia_header::lengthsOffset - sizeof container.storedChecksum,
                 .expected = std::to_wstring(container.actualChecksum),
                 .found = std::to_wstring(container.storedChecksum)});
}

void PiaFileIn::State::startLines() {
    isAscii = ut::isAscii(bodyBytes.view());
    container.encoding =
        isAscii || ut::isUtf8(bodyBytes.view()) ? PiaEncoding::Utf8 : PiaEncoding::Ansi;
    lines = PiaBodyLines(bodyBytes.view());
    decoder = PiaLineDecoder(container.encoding);
}

PiaFileIn::PiaFileIn() : state_(std::make_unique<State>()) {}
PiaFileIn::~PiaFileIn() = default;
PiaFileIn::PiaFileIn(PiaFileIn&&) noexcept = default;
PiaFileIn& PiaFileIn::operator=(PiaFileIn&&) noexcept = default;

int PiaFileIn::open(const wchar_t* path) { return open(path, PiaReadOptions()); }

int PiaFileIn::open(const wchar_t* path, const PiaReadOptions& options) {
    state_ = std::make_unique<State>();
    ut::ByteBuffer file;
    if (!piaReadFile(path, options, file, state_->report)) {
        return fileSystemFailure;
    }
    return state_->open(file.view(), options);
}

int PiaFileIn::openBytes(std::string_view bytes, const PiaReadOptions& options) {
    state_ = std::make_unique<State>();
    return state_->open(bytes, options);
}

const wchar_t* PiaFileIn::readLine() {
    std::string_view piece;
    if (!state_->lines.next(piece, state_->report)) {
        return nullptr;
    }
    state_->decoder.decode(piece, state_->currentLine, state_->lines, state_->report);
    return state_->currentLine.c_str();
}

const PiaContainer& PiaFileIn::container() const { return state_->container; }
const PiaReport& PiaFileIn::report() const { return state_->report; }
std::string_view PiaFileIn::body() const { return state_->bodyBytes.view(); }

bool piaReadFile(const wchar_t* path, const PiaReadOptions& options, ut::ByteBuffer& file,
                 PiaReport& report) {
    if (path == nullptr) {
        return report.fail({.code = PiaCode::FileUnreadable, .found = L"no path"});
    }
    bool tooLarge = false;
    const ut::SystemError error = ut::readFile(path, options.limits.bodyBytes, file, tooLarge);
    if (tooLarge) {
        return report.fail(
            {.code = PiaCode::FileTooLarge,
             .expected = L"at most " + std::to_wstring(options.limits.bodyBytes) + L" bytes"});
    }
    if (error) {
        return report.fail(
            {.code = PiaCode::FileUnreadable, .found = ut::decodePath(error.message())});
    }
    return true;
}
