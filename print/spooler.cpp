#include "print/spooler.h"

namespace wut {

namespace {

Spooler* inUse = nullptr;

}  // namespace

Spooler& spooler() { return inUse != nullptr ? *inUse : systemSpooler(); }

SpoolerForTest::SpoolerForTest(Spooler& spooler) : before_(inUse) { inUse = &spooler; }

SpoolerForTest::~SpoolerForTest() { inUse = before_; }

}  // namespace wut
