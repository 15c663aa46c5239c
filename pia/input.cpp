#include <utility>

#include "pia/body_reader.h"
#include "pia/container.h"
#include "pia/entry_taker.h"
#include "pia/file_state.h"
#include "pia/json_reader.h"

class PiaInput::Impl {
public:
    virtual ~Impl() = default;
    virtual bool parse(std::string_view file, const PiaReadOptions& options, PiaEntryTaker* entries,
                       PiaContainer& container, PiaReport& report) = 0;
    virtual std::string_view body() const = 0;
    PiaBlock& root() { return tree_.root(); }

protected:
    PiaTree tree_;
};

/// Line text in a compressed file.
class PiaInput::Pia2InputImpl final : public Impl {
public:
    bool parse(std::string_view file, const PiaReadOptions& options, PiaEntryTaker* entries,
               PiaContainer& container, PiaReport& report) override {
        const int status = file_.openBytes(file, options);
        report = std::move(file_.state_->report);
        container = file_.container();
        return status == 0 && parseLines(options, entries, report);
    }

    /// Parses body text that no container holds.
    bool parseBody(std::string_view body, const PiaReadOptions& options, PiaEntryTaker* entries,
                   PiaContainer& container, PiaReport& report) {
        if (body.size() > options.limits.bodyBytes) {
            return report.fail({.code = PiaCode::BodyTooLarge});
        }
        ut::ByteBuffer& bytes = file_.state_->bodyBytes;
        bytes.reserve(body.size());
        body.copy(bytes.data(), body.size());
        bytes.setSize(body.size());
        file_.state_->startLines();
        container.encoding = file_.container().encoding;
        container.bodyBytes = body.size();
        return parseLines(options, entries, report);
    }

    std::string_view body() const override { return file_.body(); }

private:
    bool parseLines(const PiaReadOptions& options, PiaEntryTaker* entries, PiaReport& report) {
        return PiaBodyReader(file_.body(), file_.state_->isAscii, file_.container().encoding,
                             options.limits, tree_, report, entries)
            .read();
    }

    PiaFileIn file_;
};

/// JSON text.
class PiaInput::Pia3InputImpl final : public Impl {
public:
    bool parse(std::string_view file, const PiaReadOptions& options, PiaEntryTaker* entries,
               PiaContainer& container, PiaReport& report) override {
        container.version = 3;
        container.bodyBytes = file.size();
        if (file.size() > options.limits.bodyBytes) {
            return report.fail({.code = PiaCode::FileTooLarge});
        }
        text_ = file;
        if (!ut::isUtf8(file)) {
            container.encoding = PiaEncoding::Ansi;
        }
        if (!parseJson(container.encoding, options.limits, report)) {
            return false;
        }
        if (entries != nullptr) {
            entries->takeAll(root());
        }
        return true;
    }

    std::string_view body() const override { return text_; }

private:
    bool parseJson(PiaEncoding encoding, const PiaLimits& limits, PiaReport& report) {
        return encoding == PiaEncoding::Utf8
                   ? piaReadJson(text_, limits, tree_, report)
                   : piaReadJson(ut::encodeUtf8(ut::decodeAnsi(text_)), limits, tree_, report);
    }

    std::string text_;
};

PiaInput::PiaInput() = default;
PiaInput::~PiaInput() = default;
PiaInput::PiaInput(PiaInput&&) noexcept = default;
PiaInput& PiaInput::operator=(PiaInput&&) noexcept = default;

bool PiaInput::open(const wchar_t* path) { return open(path, PiaReadOptions()); }

bool PiaInput::open(const wchar_t* path, const PiaReadOptions& options) {
    reset();
    ut::ByteBuffer file;
    return piaReadFile(path, options, file, report_) && openBytes(file.view(), options);
}

bool PiaInput::openBytes(std::string_view file, const PiaReadOptions& options) {
    reset();
    const bool isVersion2 = file.size() > pia_header::versionOffset &&
                            file[pia_header::versionOffset] == pia_header::version2Digit;
    if (isVersion2) {
        impl_ = std::make_unique<Pia2InputImpl>();
    } else {
        impl_ = std::make_unique<Pia3InputImpl>();
    }
    return keepIf(impl_->parse(file, options, entries_, container_, report_));
}

bool PiaInput::openBody(std::string_view body, const PiaReadOptions& options) {
    reset();
    auto impl = std::make_unique<Pia2InputImpl>();
    const bool done = impl->parseBody(body, options, entries_, container_, report_);
    impl_ = std::move(impl);
    return keepIf(done);
}

void PiaInput::reset() {
    impl_.reset();
    container_ = {};
    report_.clear();
}

bool PiaInput::keepIf(bool done) {
    if (!done) {
        impl_.reset();
    }
    return done;
}

PiaBlock* PiaInput::root() { return impl_ ? &impl_->root() : nullptr; }
const PiaBlock* PiaInput::root() const { return impl_ ? &impl_->root() : nullptr; }
std::string_view PiaInput::body() const { return impl_ ? impl_->body() : std::string_view(); }
