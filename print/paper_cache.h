/// Papers that drivers have reported, by printer, port and settings.
#pragma once

#include <compare>
#include <cstddef>
#include <map>
#include <span>
#include <string>
#include <vector>

#include <platen/print.h>

namespace wut {

/// What a driver has said; an empty list has not been asked for or has not been answered.
struct PaperLists {
    OdArray<unsigned short> ids;
    OdArray<OdString> names;
    /// Tenths of a millimetre.
    OdArray<POINT> dims;
};

/// What an answer depends on. All of it is borrowed.
struct PaperQuery {
    const wchar_t* printer;
    const wchar_t* port;
    std::span<const std::byte> settings;
};

/// Not locked: queries come from one thread.
class PaperCache {
public:
    static PaperCache& instance();

    /// The entry of a query, made when there is none. It stays where it is until it is forgotten.
    PaperLists& lists(const PaperQuery& query);
    /// All entries for an empty name.
    void forget(const OdString& printer);

private:
    struct Key {
        OdString printer;
        OdString port;
        std::vector<std::byte> settings;

        PaperQuery query() const { return {printer.c_str(), port.c_str(), settings}; }
    };
    /// Looks up by what is borrowed, so that nothing is copied for an entry that is there.
    struct Before {
        using is_transparent = void;
        bool operator()(const Key& left, const Key& right) const;
        bool operator()(const Key& left, const PaperQuery& right) const;
        bool operator()(const PaperQuery& left, const Key& right) const;
    };

    std::map<Key, PaperLists, Before> entries_;
};

}  // namespace wut
