#pragma once

#include "platform/types.h"

namespace koru {

// A singly linked list of 16-byte items. A node's address is the item's handle; handles are only
// compared, never followed, so stale ones do no harm.
struct LIST {
    struct Node {
        RECTL item;
        Node* next;
    };
    Node* head;

    ULONG Add(const RECTL& item); // the new handle, 0 (with a message) when memory is short
    BOOL DeleteItem(ULONG handle); // 1 removed; 0 with a message
    BOOL DeleteHead();
    void Clear();
    bool IsEmpty() const { return head == nullptr; }
    Node* First() const { return head; }
    static Node* Next(const Node* node) { return node->next; }
    void MoveHeadTo(LIST& target); // to the front of `target`
    BOOL AppendTo(LIST& target); // this list becomes empty; 0 when it was
};

} // namespace koru
