#include "plotcfg/device_keys.h"
#include "plotcfg/media_keys.h"

bool CustomPaperSize::initFromPc3(const PiaBlock& block) {
    source = 0;
    return node_keys::read(block, *this);
}
bool CustomPaperSize::writeToPc3(PiaBlock& block) const { return node_keys::write(*this, block); }

using MediaDescription = CMediaNode::CSizeNode::CMediaDescriptionNode;

bool MediaDescription::CMediaBoundsNode::init(const PiaBlock& block) {
    return node_keys::read(block, *this);
}
bool MediaDescription::CMediaBoundsNode::write(PiaBlock& block) const {
    return node_keys::write(*this, block);
}
bool MediaDescription::init(const PiaBlock& block) { return node_keys::read(block, *this); }
bool MediaDescription::write(PiaBlock& block) const { return node_keys::write(*this, block); }

bool CMediaNode::CSizeNode::init(const PiaBlock& block) { return node_keys::read(block, *this); }
bool CMediaNode::CSizeNode::write(PiaBlock& block) const { return node_keys::write(*this, block); }

bool CMediaNode::CDestinationNode::init(const PiaBlock& block) {
    return node_keys::read(block, *this);
}
bool CMediaNode::CDestinationNode::write(PiaBlock& block) const {
    return node_keys::write(*this, block);
}

bool CMediaNode::CustomPapersNode::init(const PiaBlock& block) {
    return node_keys::read(block, *this);
}
bool CMediaNode::CustomPapersNode::write(PiaBlock& block) const {
    return node_keys::write(*this, block);
}

bool CMediaNode::init(const PiaBlock& block) { return node_keys::read(block, *this); }
bool CMediaNode::write(PiaBlock& block) const { return node_keys::write(*this, block); }

bool CIoNode::init(const PiaBlock& block) { return node_keys::read(block, *this); }
bool CIoNode::write(PiaBlock& block) const { return node_keys::write(*this, block); }

bool CResColorMemNode::CResolutionNode::init(const PiaBlock& block) {
    return node_keys::read(block, *this);
}
bool CResColorMemNode::CResolutionNode::write(PiaBlock& block) const {
    return node_keys::write(*this, block);
}
void CResColorMemNode::CResolutionNode::set(long dpi) {
    constexpr std::size_t longestName = 31;
    const std::wstring side = std::to_wstring(dpi);
    name = (side + L"x" + side).substr(0, longestName);
    physResolutionX = physResolutionY = static_cast<double>(dpi);
    addrResolutionX = addrResolutionY = static_cast<double>(dpi);
}

bool CResColorMemNode::init(const PiaBlock& block) { return node_keys::read(block, *this); }
bool CResColorMemNode::write(PiaBlock& block) const { return node_keys::write(*this, block); }
