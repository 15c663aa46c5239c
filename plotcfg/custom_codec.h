/// How the "custom" block is read, written and shown: its properties are no fixed keys.
#pragma once

#include <platen/plotcfg.h>
#include "pia/node_keys.h"

template <>
struct NodeCodec<CCustomNode> {
    static bool read(const PiaBlock& block, CCustomNode& node, const PiaPath& path,
                     PiaReport& report);
    static bool write(const CCustomNode& node, PiaSink& block);
    /// As blocks "numbers", "binaries", "strings" and "bools"; numbers as the texts they are.
    static void show(const CCustomNode& node, NodeVisitor& visitor);
};
