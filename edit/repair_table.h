/// The stable word and the sentence of everything that a repair takes for granted, in the order of
/// `RepairCode`, and whether nothing is lost or guessed by it.
#pragma once

#include <platen/edit_repair.h>

namespace platen {

struct RepairCodeEntry {
    RepairCode code;
    const char* word;
    const char* message;
    bool safe = false;
};

inline constexpr RepairCodeEntry repairCodeTable[] = {
    {RepairCode::LineFeedsTranslated, "line-feeds-translated",
     "the file was transferred as text, which put a carriage return before every line feed; they "
     "are taken out, and the checksum holds",
     true},
    {RepairCode::ByteCorrected, "byte-corrected",
     "one byte is wrong; with this one all checksums and lengths hold", true},
    {RepairCode::HeaderText, "header-text",
     "the header is not that of a plotter file, and is written anew", true},
    {RepairCode::HeaderMissing, "header-missing",
     "there is no header before the compressed data, and one is written"},
    {RepairCode::KindByContent, "kind-by-content",
     "the header does not say what the file is, which is told by what it holds"},
    {RepairCode::KindByFlag, "kind-by-flag",
     "the header names a colour-dependent table, but the table has no colours; it is named one "
     "now"},
    {RepairCode::StreamMoved, "stream-moved",
     "the compressed data does not begin at byte 60 and was looked for"},
    {RepairCode::StreamHeader, "stream-header",
     "the first two bytes of the compressed data are damaged, and the usual ones are taken"},
    {RepairCode::StreamTruncated, "stream-truncated",
     "the compressed data ends too early; what it held until there is taken"},
    {RepairCode::StreamCorrupt, "stream-corrupt",
     "the compressed data is damaged; what it held until there is taken, and values shortly before "
     "may be wrong"},
    {RepairCode::StreamUnverified, "stream-unverified",
     "the body has its full length, but not the checksum of the compressed data; any value may be "
     "wrong"},
    {RepairCode::BodyLength, "body-length", "the header's length of the body is corrected", true},
    {RepairCode::CompressedLength, "compressed-length",
     "the header's length of the compressed data is corrected", true},
    {RepairCode::Checksum, "checksum", "the checksum in the header is corrected", true},
    {RepairCode::BytesAfterStream, "bytes-after-stream",
     "the bytes after the compressed data are left out"},
    {RepairCode::BytesDropped, "bytes-dropped",
     "bytes that are no text in the encoding of the body are left out"},
    {RepairCode::BlankLine, "blank-line", "a line of spaces is left out", true},
    {RepairCode::LastLineTorn, "last-line-torn",
     "the body was cut within its last line, which is left out"},
    {RepairCode::LineInvalid, "line-invalid",
     "the line is no item, no beginning and no end of a block, and is left out"},
    {RepairCode::LinesJoined, "lines-joined", "a line feed is missing, and the line is divided"},
    {RepairCode::LineTooLong, "line-too-long",
     "the line is longer than the 511 bytes of a read; the rest is left out"},
    {RepairCode::LineFull, "line-full",
     "the line has exactly 511 characters, so that whoever wrote it probably cut it; what is there "
     "is taken"},
    {RepairCode::NameSpaces, "name-spaces", "the name holds spaces, which are taken out"},
    {RepairCode::TextDropped, "text-dropped",
     "text beside a brace or after a binary value is left out"},
    {RepairCode::BinaryEnded, "binary-ended",
     "the binary value has no end; it ends with its last line of digits"},
    {RepairCode::ClosingBraceAtEnd, "closing-brace-at-end",
     "the body ends before its blocks are closed, and they are closed there", true},
    {RepairCode::ClosingBraceMissing, "closing-brace-missing",
     "by the indentation of the line, blocks before it have ended without a closing brace"},
    {RepairCode::ClosingBraceSurplus, "closing-brace-surplus",
     "there is no block that the closing brace ends, and it is left out"},
    {RepairCode::OpeningBraceMissing, "opening-brace-missing",
     "by the indentation of what follows, the line is the beginning of a block"},
    {RepairCode::BlockHeadMissing, "block-head-missing",
     "by its indentation the line belongs to a block whose beginning is missing, and is left out"},
    {RepairCode::TooDeep, "too-deep", "the block is nested deeper than readers take, and left out"},
    {RepairCode::TooManyItems, "too-many-items",
     "there are more items than readers take; the rest is left out"},
    {RepairCode::DuplicateEqual, "duplicate-equal",
     "the block holds the same item twice, and one is left out", true},
    {RepairCode::DuplicateDropped, "duplicate-dropped",
     "the block holds the same name and type twice; the first one is taken"},
    {RepairCode::EntryRenumbered, "entry-renumbered",
     "an entry of a list has a number that is taken or none, and gets that of its place"},
    {RepairCode::JsonCut, "json-cut",
     "the JSON text is damaged; its members until there are taken"},
    {RepairCode::KeyDefault, "key-default", "a required key is missing, and its default is taken"},
    {RepairCode::ValueDefault, "value-default",
     "the value cannot be used, and the default of its key is taken"},
    {RepairCode::KeyMisspelt, "key-misspelt",
     "a required key is missing, and an unknown one differs from it in one letter"},
    {RepairCode::TypeWrong, "type-wrong", "the value has another type than its key"},
    {RepairCode::ItemDropped, "item-dropped", "the item cannot stand there, and is left out"},
    {RepairCode::ValueDropped, "value-dropped",
     "an optional number does not convert, and is left out"},
    {RepairCode::StyleDefault, "style-default",
     "a style is missing that colours use, and one with default settings takes its place"},
    {RepairCode::ColourStyle, "colour-style",
     "a colour names no style of the table, and gets the one of its place"},
    {RepairCode::ColourIndexOff, "colour-index-off",
     "the table has no colour index, and no longer says that it has"},
    {RepairCode::PmpOther, "pmp-other", "the PMP is found under the name of the configuration"},
    {RepairCode::PmpDetached, "pmp-detached",
     "the PMP that the configuration names is gone, and it names none now"},
    {RepairCode::CharacterReplaced, "character-replaced",
     "the text holds characters that the code page does not have; question marks take their place"},
};

}  // namespace platen
