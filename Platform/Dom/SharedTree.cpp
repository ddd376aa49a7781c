#include "Dom/SharedTree.h"

#include "Com/FaultInjection.h"
#include "Dom/DomSerializer.h"
#include "Dom/TreeCopy.h"

#include <new>
#include <utility>

namespace OvPlatform {

SharedTree::~SharedTree() {
    if (m_isOwn) m_tree->Release();
}

void SharedTree::Part() {
    const std::lock_guard held(m_lock);
    if (m_readers == 0) return;
    m_tree = Copy({}).release();
    m_isOwn = m_isReadBack = true;
}

bool SharedTree::Inherit() noexcept {
    const std::lock_guard held(m_lock);
    m_isOwn = m_readers != 0;
    return m_isOwn;
}

bool SharedTree::IsLeft() noexcept {
    const std::lock_guard held(m_lock);
    return m_isOwn;
}

void SharedTree::AddReader() noexcept {
    const std::lock_guard held(m_lock);
    ++m_readers;
}

void SharedTree::RemoveReader() noexcept {
    const std::lock_guard held(m_lock);
    --m_readers;
}

DomTree::Pointer SharedTree::Take(const DomSettings& settings) {
    const std::lock_guard held(m_lock);
    const bool isLast = m_isOwn && m_readers == 1;
    if (!isLast || !(m_isReadBack || m_readBack.isSame)) return Copy(settings);
    m_isOwn = false;
    DomTree::Pointer tree(std::exchange(m_tree, nullptr));
    tree->Settings() = settings;
    return tree;
}

DomTree::Pointer SharedTree::Copy(const DomSettings& settings) const {
    if (FaultPointHit()) throw std::bad_alloc();
    DomTree::Pointer copy = TreeCopy::Of(*m_tree, settings);
    ReadBack form = m_readBack;
    form.isSame = true;
    copy->SetForm(form);
    return copy;
}

bool SharedTree::Write(std::string& bytes) {
    const std::lock_guard held(m_lock);
    return DomSerializer::ToBytes(*m_tree, bytes);
}

TreeShare::TreeShare(std::shared_ptr<SharedTree> tree) noexcept : m_tree(std::move(tree)) {
    if (m_tree != nullptr) m_tree->AddReader();
}

TreeShare::~TreeShare() {
    if (m_tree != nullptr) m_tree->RemoveReader();
}

DomTree::Pointer TreeShare::Take(const DomSettings& settings) {
    DomTree::Pointer tree = m_tree->Take(settings);
    if (m_tree->IsLeft()) tree->CameFrom(*this);
    *this = {};
    return tree;
}

} // namespace OvPlatform
