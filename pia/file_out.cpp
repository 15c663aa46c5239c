#include <limits>

#include <platen/utcore.h>
#include "pia/body_writer.h"
#include "pia/container.h"

namespace {
constexpr int fileSystemFailure = -2;
constexpr int compressionLevel = 6;
/// The header's lengths have 32 bits.
constexpr std::size_t longestBody = std::numeric_limits<std::uint32_t>::max();
}  // namespace

bool PiaFileOut::encodeParts(const std::function<bool(std::string&)>& fill, std::string& header,
                             ut::ByteBuffer& stream) {
    status_ = 0;
    report_.clear();
    std::string body;
    if (!fill(body)) {
        status_ = fileSystemFailure;
        return false;
    }
    if (body.size() > longestBody) {
        status_ = fileSystemFailure;
        return report_.fail({.code = PiaCode::BodyTooLarge,
                             .expected = L"at most " + std::to_wstring(longestBody) + L" bytes"});
    }
    status_ = ut::ZlibEngine::compress(body, stream, compressionLevel);
    if (status_ != 0) {
        return report_.fail({.code = PiaCode::FileUnwritable, .found = L"compression failed"});
    }
    header = pia_header::encode(kind_, static_cast<std::uint32_t>(body.size()), stream.view());
    return true;
}

bool PiaFileOut::writeParts(const std::function<bool(std::string&)>& fill, const wchar_t* path) {
    std::string header;
    ut::ByteBuffer stream;
    if (!encodeParts(fill, header, stream)) {
        return false;
    }
    const std::string_view pieces[] = {header, stream.view()};
    if (const ut::SystemError error = ut::replaceFile(ut::correctSlashes(path), pieces)) {
        status_ = fileSystemFailure;
        return report_.fail(
            {.code = PiaCode::FileUnwritable, .found = ut::decodePath(error.message())});
    }
    return true;
}

bool PiaFileOut::refuse(const wchar_t* expected) {
    status_ = fileSystemFailure;
    report_.clear();
    return report_.fail({.code = PiaCode::FileUnwritable, .expected = expected});
}

bool PiaFileOut::encode(const PiaBlock& root, ut::ByteBuffer& file) {
    std::string header;
    ut::ByteBuffer stream;
    if (!encodeParts([&](std::string& body) { return piaWriteBody(root, body, report_); }, header,
                     stream)) {
        return false;
    }
    file.reserve(header.size() + stream.size());
    file.setSize(header.size() + stream.size());
    header.copy(file.data(), header.size());
    stream.view().copy(file.data() + header.size(), stream.size());
    return true;
}

bool PiaFileOut::write(const PiaBlock* root, const wchar_t* path) {
    if (root == nullptr || path == nullptr) {
        return refuse(L"a tree and a path");
    }
    return writeParts([&](std::string& body) { return piaWriteBody(*root, body, report_); }, path);
}

bool PiaFileOut::write(const std::function<bool(PiaSink&)>& fill, const wchar_t* path) {
    if (path == nullptr) {
        return refuse(L"a path");
    }
    return writeParts(
        [&](std::string& body) {
            PiaBodySink sink(body, report_);
            return fill(sink.root()) && sink.finish();
        },
        path);
}
