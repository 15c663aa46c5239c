#include "pmp/meta_keys.h"
#include "pmp/pmp_keys.h"

bool CMetaNode::init(const PiaBlock& block) { return node_keys::read(block, *this); }
bool CMetaNode::write(PiaBlock& block) const { return node_keys::write(*this, block); }

bool PmpSizeNode::PaperSize::init(const PiaBlock& block) { return node_keys::read(block, *this); }
bool PmpSizeNode::PaperSize::write(PiaBlock& block) const { return node_keys::write(*this, block); }
bool PmpSizeNode::init(const PiaBlock& block) { return node_keys::read(block, *this); }
bool PmpSizeNode::write(PiaBlock& block) const { return node_keys::write(*this, block); }

bool PmpDescriptionNode::PaperSizeDescription::init(const PiaBlock& block) {
    return node_keys::read(block, *this);
}
bool PmpDescriptionNode::PaperSizeDescription::write(PiaBlock& block) const {
    return node_keys::write(*this, block);
}
bool PmpDescriptionNode::init(const PiaBlock& block) { return node_keys::read(block, *this); }
bool PmpDescriptionNode::write(PiaBlock& block) const { return node_keys::write(*this, block); }

bool ModNode::MediaNode::init(const PiaBlock& block) { return node_keys::read(block, *this); }
bool ModNode::MediaNode::write(PiaBlock& block) const { return node_keys::write(*this, block); }
bool ModNode::init(const PiaBlock& block) { return node_keys::read(block, *this); }
bool ModNode::write(PiaBlock& block) const { return node_keys::write(*this, block); }

bool UdmNode::CalibrationNode::init(const PiaBlock& block) { return node_keys::read(block, *this); }
bool UdmNode::CalibrationNode::write(PiaBlock& block) const {
    return node_keys::write(*this, block);
}
bool UdmNode::MediaNode::init(const PiaBlock& block) { return node_keys::read(block, *this); }
bool UdmNode::MediaNode::write(PiaBlock& block) const { return node_keys::write(*this, block); }
bool UdmNode::init(const PiaBlock& block) { return node_keys::read(block, *this); }
bool UdmNode::write(PiaBlock& block) const { return node_keys::write(*this, block); }

bool HiddenNode::MediaNode::init(const PiaBlock& block) { return node_keys::read(block, *this); }
bool HiddenNode::MediaNode::write(PiaBlock& block) const { return node_keys::write(*this, block); }
bool HiddenNode::init(const PiaBlock& block) { return node_keys::read(block, *this); }
bool HiddenNode::write(PiaBlock& block) const { return node_keys::write(*this, block); }
