#include "escape/list.h"

#include "driver/debug_print.h"
#include "driver/handles.h"
#include "driver/pool.h"

namespace koru {

ULONG LIST::Add(const RECTL& item)
{
    auto* const node = AllocateRecord<Node>();
    if (!node) {
        DebugPrintPiece("LIST:Fatal error, there are not memory enough\n");
        return 0;
    }
    node->item = item;
    node->next = head;
    head = node;
    return NumberOf(node);
}

BOOL LIST::DeleteItem(ULONG handle)
{
    if (NumberOf(head) == handle)
        return DeleteHead();
    for (Node** link = &head; *link; link = &(*link)->next) {
        Node* const node = *link;
        if (NumberOf(node) != handle)
            continue;
        *link = node->next;
        FreeToPool(node);
        return TRUE;
    }
    DebugPrintPiece("DeleteItem called with a wrong item handle.\n");
    return FALSE;
}

BOOL LIST::DeleteHead()
{
    if (!head) {
        DebugPrintPiece("DeleteItem called with empty list\n");
        return FALSE;
    }
    Node* const node = head;
    head = node->next;
    FreeToPool(node);
    return TRUE;
}

void LIST::Clear()
{
    while (!IsEmpty())
        DeleteHead();
}

void LIST::MoveHeadTo(LIST& target)
{
    if (!head)
        return;
    Node* const node = head;
    head = node->next;
    node->next = target.head;
    target.head = node;
}

BOOL LIST::AppendTo(LIST& target)
{
    if (!head)
        return FALSE;
    Node** end = &target.head;
    while (*end)
        end = &(*end)->next;
    // Emptied first: appended to itself, a list stays as it is.
    Node* const nodes = head;
    head = nullptr;
    *end = nodes;
    return TRUE;
}

} // namespace koru
