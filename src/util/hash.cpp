#include <zelutil/util/hash.h>

#include "util/hash_impl.h"

namespace ZelU::Hash {

Hash<const char*>::IEntry::~IEntry() = default;

Hash<const char*>::~Hash() = default;

Smart::Pointer<Hash<const char*>> Hash<const char*>::Create(std::size_t size, IEntry::IFactory* factory,
                                                            bool autoRehash) {
    return Smart::Pointer<Hash>(new Impl::StringHash(size, factory, autoRehash));
}

}  // namespace ZelU::Hash
