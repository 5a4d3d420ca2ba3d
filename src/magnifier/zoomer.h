#pragma once

#include "platform/types.h"

namespace koru {

struct ZoomerList;

enum ZoomerModes : ULONG { ModeOrdinary = 0, ModeExclusive = 1, ModeMoving = 2 };
enum ZoomerStyles : ULONG { StyleNormal = 0, StyleInverted = 1 };
enum ZoomerBehaviours : ULONG { BehaviourImmediate = 0, BehaviourFull = 1, BehaviourDeferred = 2 };
enum ZoomerBorders : ULONG { BorderLeft = 1, BorderTop = 2, BorderRight = 4, BorderBottom = 8, BorderWhite = 16 };

// One magnified view. Its address is the ID that clients know.
struct Zoomer {
    ULONG state; // 0: off
    BYTE xFactor, yFactor;
    ULONG mode;
    ULONG style;
    ULONG behaviour;
    ULONG border; // ZoomerBorders
    ULONG bordersSize; // pixels
    RECTL originalRect; // on the VirtualScreen
    RECTL zoomedRect; // on the RealScreen
    RECTL previousZoomedRect; // at the last magnification, while the mode is ModeMoving
    RECTL destRect; // where the whole originalRect comes to lie, whatever the view shows of it
    ULONG improveFactor;
    ULONG pending; // pendingRect holds drawing not yet magnified
    RECTL pendingRect;
    ULONG changed; // a property changed since it was last rendered
    ULONG screenWidth, screenHeight;
    const BYTE* colourTable;
    HSURF hBmpAux;
    ULONG pickColour; // 0: the lighter colour wins, 1: the darker one
    HSURF hBmp; // the magnified image, in screen coordinates
    LONG zOrder;
    Zoomer* next;

    // Scratch of one walk over the stack, kept here because the stack's depth is the client's.
    RECTL walkPieces[4];
    ULONG walkPieceCount;
    ULONG walkNext;
    Zoomer* walkBelow;

    // Setters store any value. All but the factor setters mark the zoomer `changed` when the value differs.
    void SetState(ULONG value); // marks it even when the value is the same
    void SetMode(ULONG value);
    void SetStyle(ULONG value);
    void SetBehaviour(ULONG value);
    void SetOriginalRect(const RECTL& value);
    void SetZoomedRect(const RECTL& value);
    void SetFactor(ULONG value); // both factors, low byte
    void SetXFactor(ULONG value);
    void SetYFactor(ULONG value);
    void SetImproveFactor(ULONG value);
    void SetBorder(ULONG value);
    void SetBordersSize(ULONG value);
    void SetPickColour(ULONG value); // non-zero: the darker colour wins

    bool IsOn() const { return state != 0; }
    RECTL FramedRect() const;

private:
    void Change(ULONG& field, ULONG value);
    void PlaceDestRect();
};

} // namespace koru
