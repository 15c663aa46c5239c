#include "pia/body_lines.h"

#include <cstring>

#include <platen/oda.h>
#include <platen/utcore.h>

PiaBodyLines::PiaBodyLines(std::string_view body)
    : body_(body),
      position_(body.data()),
      pieceStart_(body.data()),
      textEnd_(body.data()),
      nextLine_(body.data()),
      holdsNul_(body.find('\0') != std::string_view::npos) {}

void PiaBodyLines::startLine() {
    const char* end = body_.data() + body_.size();
    const auto* feed = static_cast<const char*>(
        std::memchr(position_, '\n', static_cast<std::size_t>(end - position_)));
    endsWithFeed_ = feed != nullptr;
    textEnd_ = endsWithFeed_ ? feed : end;
    nextLine_ = endsWithFeed_ ? feed + 1 : end;
    if (endsWithFeed_ && textEnd_ != position_ && textEnd_[-1] == '\r') {
        --textEnd_;
    }
    ++line_;
    insideLine_ = true;
}

bool PiaBodyLines::next(std::string_view& piece, PiaReport& report) {
    if (!insideLine_) {
        if (position_ == body_.data() + body_.size()) {
            return false;
        }
        startLine();
    }
    pieceStart_ = position_;
    const auto left = static_cast<std::size_t>(textEnd_ - position_);
    if (left < readSize) {
        piece = {position_, left};
        position_ = nextLine_;
        insideLine_ = false;
    } else {
        piece = {position_, readSize};
        position_ += readSize;
        // Text that ends with the body, not with a line feed, leaves nothing to read.
        insideLine_ = left > readSize || endsWithFeed_;
    }
    if (holdsNul_) {
        cutAtNul(piece, report);
    }
    return true;
}

void PiaBodyLines::cutAtNul(std::string_view& piece, PiaReport& report) const {
    const std::size_t nul = piece.find('\0');
    if (nul != std::string_view::npos) {
        report.warn({.code = PiaCode::NulInLine, .offset = offset() + nul, .line = line_});
        piece = piece.substr(0, nul);
    }
}

void PiaLineDecoder::decode(std::string_view piece, std::wstring& text, const PiaBodyLines& lines,
                            PiaReport& report) const {
    if (encoding_ == PiaEncoding::Utf8) {
        if (ut::decodeUtf8(piece, text)) {
            return;
        }
        report.warn({.code = PiaCode::LineDecodedLeniently,
                     .offset = lines.offset(),
                     .line = lines.line()});
    }
    text = OdString(piece, OdCodePageId::CP_ANSI).text();
}
