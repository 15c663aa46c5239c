#include <cstring>
#include <utility>

#include <platen/utcore.h>

namespace ut {

ByteBuffer::ByteBuffer(ByteBuffer&& other) noexcept
    : bytes_(std::move(other.bytes_)),
      size_(std::exchange(other.size_, 0)),
      capacity_(std::exchange(other.capacity_, 0)) {}

ByteBuffer& ByteBuffer::operator=(ByteBuffer&& other) noexcept {
    ByteBuffer moved(std::move(other));
    std::swap(bytes_, moved.bytes_);
    std::swap(size_, moved.size_);
    std::swap(capacity_, moved.capacity_);
    return *this;
}

void ByteBuffer::reserve(std::size_t capacity) {
    if (capacity <= capacity_) {
        return;
    }
    std::unique_ptr<char[]> bytes = std::make_unique_for_overwrite<char[]>(capacity);
    if (size_ > 0) {
        std::memcpy(bytes.get(), bytes_.get(), size_);
    }
    bytes_ = std::move(bytes);
    capacity_ = capacity;
}

}  // namespace ut
