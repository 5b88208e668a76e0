#pragma once

// Which instructions the fast machine takes several at a time: what the game's songs and the
// benchmark's patch run most, chosen so that as few jumps between handlers are left as can be.
// Behind each instruction but the first stand the places in the group, from 0, of those that fill
// its ra and its rb, so that the values need not be read back; -1 where that is not known.

// clang-format off
// Four instructions.
#define HUM_FAST_FOURS(X) \
    X(Addf, Mulf, -1,0, Addf, -1,1, StorefAt, 2,-1) X(Addf, Mulf, -1,0, StorefAt, 1,-1, Li, -1,-1) \
    X(Addf, StorefBy, 0,-1, LoadLocal, -1,-1, LoadfBy, -1,2) \
    X(Addf, StorefLocal, 0,-1, Lf, -1,-1, Lf, -1,-1) \
    X(Lf, Divf, -1,0, Addf, -1,1, StorefLocal, 2,-1) \
    X(Lf, Lf, -1,-1, LoadfLocal, -1,-1, Mulf, 1,2) \
    X(Lf, LoadLocal, -1,-1, LoadfBy, -1,1, LoadLocal, -1,-1) \
    X(Lf, LoadfLocal, -1,-1, Mulf, 0,1, Addf, -1,2) \
    X(Lf, Mulf, -1,0, LoadfLocal, -1,-1, Mulf, 1,2) \
    X(Lf, Mulf, -1,0, StorefAt, 1,-1, LoadfAt, -1,-1) \
    X(Lf, StorefAt, 0,-1, Li, -1,-1, StoreAt, 2,-1) \
    X(Lf, StorefLocal, 0,-1, Lf, -1,-1, StorefLocal, 2,-1) \
    X(Lf, StorefLocal, 0,-1, Li, -1,-1, StoreLocal, 2,-1) X(Li, Add, -1,0, Li, -1,-1, Mod, 1,2) \
    X(Li, I2f, 0,-1, Li, -1,-1, I2f, 2,-1) X(Li, I2f, 0,-1, LoadAt, -1,-1, LoadfBy, -1,2) \
    X(Li, LoadAt, -1,-1, Li, -1,-1, Div, 1,2) X(Li, LoadLocal, -1,-1, Lea, -1,1, Lf, -1,-1) \
    X(Li, LoadLocal, -1,-1, Lea, -1,1, LoadfLocal, -1,-1) \
    X(Li, LoadfAt, -1,-1, Lf, -1,-1, Fcmplt, 1,2) X(Li, LoadfAt, -1,-1, Lf, -1,-1, Lf, -1,-1) \
    X(Li, LoadfAt, -1,-1, LoadfAt, -1,-1, LoadAt, -1,-1) \
    X(Li, Mul, -1,0, Add, -1,1, LoadfBy, -1,2) X(LoadAt, Lea, -1,0, LoadAt, -1,-1, Lea, -1,2) \
    X(LoadAt, Lf, -1,-1, LoadfAt, -1,-1, Mulf, 1,2) X(LoadAt, Li, -1,-1, Add, 0,1, StoreAt, 2,-1) \
    X(LoadAt, Li, -1,-1, Mod, 0,1, StoreAt, 2,-1) X(LoadAt, Li, -1,-1, Sub, 0,1, StoreAt, 2,-1) \
    X(LoadAt, LoadAt, -1,-1, Mod, 0,1, Li, -1,-1) \
    X(LoadLocal, Lea, -1,0, LoadLocal, -1,-1, Lea, -1,2) \
    X(LoadLocal, Lea, -1,0, LoadfLocal, -1,-1, Lf, -1,-1) \
    X(LoadLocal, Li, -1,-1, Add, 0,1, StoreLocal, 2,-1) \
    X(LoadLocal, Li, -1,-1, Sub, 0,1, StoreLocal, 2,-1) \
    X(LoadLocal, LoadBy, -1,0, LoadLocal, -1,-1, LoadBy, -1,2) \
    X(LoadLocal, LoadBy, -1,0, LoadLocal, -1,-1, StoreBy, 1,2) \
    X(LoadLocal, LoadLocal, -1,-1, Li, -1,-1, Add, 1,2) \
    X(LoadLocal, LoadLocal, -1,-1, LoadBy, -1,1, LoadfLocal, -1,-1) \
    X(LoadLocal, LoadfBy, -1,0, Lf, -1,-1, Fcmplt, 1,2) \
    X(LoadLocal, LoadfBy, -1,0, Lf, -1,-1, LoadLocal, -1,-1) \
    X(LoadLocal, LoadfBy, -1,0, LoadLocal, -1,-1, LoadfBy, -1,2) \
    X(LoadLocal, LoadfBy, -1,0, LoadfLocal, -1,-1, Lf, -1,-1) \
    X(LoadLocal, LoadfBy, -1,0, Mulf, -1,1, Addf, -1,2) \
    X(LoadLocal, StoreBy, -1,0, LoadfLocal, -1,-1, Lf, -1,-1) \
    X(LoadLocal, StoreLocal, 0,-1, Li, -1,-1, StoreLocal, 2,-1) \
    X(LoadLocal, StorefBy, -1,0, LoadfLocal, -1,-1, Lf, -1,-1) \
    X(LoadfAt, Lf, -1,-1, LoadAt, -1,-1, I2f, 2,-1) \
    X(LoadfAt, LoadAt, -1,-1, Lf, -1,-1, Lf, -1,-1) \
    X(LoadfAt, LoadAt, -1,-1, Li, -1,-1, LoadAt, -1,-1) \
    X(LoadfAt, LoadfAt, -1,-1, Addf, 0,1, StorefAt, 2,-1) \
    X(LoadfAt, LoadfAt, -1,-1, Mulf, 0,1, Addf, -1,2) \
    X(LoadfAt, LoadfLocal, -1,-1, Divf, 0,1, Lf, -1,-1) \
    X(LoadfAt, Mulf, -1,0, Addf, -1,1, Lf, -1,-1) \
    X(LoadfAt, StorefAt, 0,-1, LoadfAt, -1,-1, StorefAt, 2,-1) \
    X(LoadfLocal, F2i, 0,-1, StoreLocal, 1,-1, LoadLocal, -1,-1) \
    X(LoadfLocal, Lf, -1,-1, LoadLocal, -1,-1, LoadfBy, -1,2) \
    X(LoadfLocal, Li, -1,-1, LoadLocal, -1,-1, LoadBy, -1,2) \
    X(LoadfLocal, LoadLocal, -1,-1, I2f, 1,-1, Subf, 0,2) \
    X(LoadfLocal, LoadLocal, -1,-1, Lea, -1,1, LoadLocal, -1,-1) \
    X(LoadfLocal, LoadLocal, -1,-1, Li, -1,-1, Add, 1,2) \
    X(LoadfLocal, LoadfLocal, -1,-1, LoadfLocal, -1,-1, Subf, 1,2) \
    X(LoadfLocal, Mulf, -1,0, Addf, -1,1, Addf, -1,2) \
    X(LoadfLocal, Mulf, -1,0, Addf, -1,1, Mulf, -1,2) \
    X(LoadfLocal, Mulf, -1,0, LoadLocal, -1,-1, StorefBy, 1,2) \
    X(Mulf, Addf, -1,0, Mulf, -1,1, LoadLocal, -1,-1) \
    X(Mulf, Addf, -1,0, StorefAt, 1,-1, LoadfAt, -1,-1) \
    X(Mulf, Lf, -1,-1, LoadLocal, -1,-1, LoadfBy, -1,2) \
    X(Mulf, StorefAt, 0,-1, Lf, -1,-1, LoadfAt, -1,-1) \
    X(Mulf, StorefLocal, 0,-1, LoadLocal, -1,-1, LoadfBy, -1,2) \
    X(Mulf, StorefLocal, 0,-1, LoadfLocal, -1,-1, Lf, -1,-1) \
    X(StoreLocal, LoadLocal, -1,-1, Lea, -1,1, LoadLocal, -1,-1) \
    X(StorefAt, Lf, -1,-1, Lf, -1,-1, LoadfAt, -1,-1) \
    X(StorefAt, LoadfAt, -1,-1, Lf, -1,-1, LoadfAt, -1,-1) \
    X(StorefAt, LoadfAt, -1,-1, StorefAt, 1,-1, Li, -1,-1) \
    X(StorefLocal, Lf, -1,-1, LoadfLocal, -1,-1, LoadfLocal, -1,-1) \
    X(StorefLocal, LoadLocal, -1,-1, LoadfBy, -1,1, Lf, -1,-1) \
    X(StorefLocal, LoadfLocal, -1,-1, LoadLocal, -1,-1, Lea, -1,2) \
    X(Subf, Lf, -1,-1, Addf, 0,1, StorefLocal, 2,-1) \
    X(Subf, Mulf, -1,0, Addf, -1,1, StorefBy, 2,-1) \
    X(Subf, StorefLocal, 0,-1, LoadfLocal, -1,-1, LoadfLocal, -1,-1)

// Three and a jump.
#define HUM_FAST_FOUR_JUMPS(X) \
    X(Addf, StorefBy, 0,-1, LoadLocal, -1,-1, Jz, 2,-1) X(Lf, Li, -1,-1, LoadAt, -1,-1, Jz, 2,-1) \
    X(Lf, StorefLocal, 0,-1, LoadLocal, -1,-1, Jz, 2,-1) \
    X(Li, StoreAt, 0,-1, LoadAt, -1,-1, Jz, 2,-1) X(LoadAt, Li, -1,-1, Cmpeq, 0,1, Jnz, 2,-1) \
    X(LoadAt, Li, -1,-1, Cmpeq, 0,1, Jz, 2,-1) X(LoadAt, Li, -1,-1, Cmpge, 0,1, Jz, 2,-1) \
    X(LoadAt, Li, -1,-1, Cmplt, 0,1, Jz, 2,-1) X(LoadAt, LoadAt, -1,-1, Cmplt, 0,1, Jz, 2,-1) \
    X(LoadLocal, Li, -1,-1, Cmpgt, 0,1, Jz, 2,-1) X(LoadLocal, Li, -1,-1, Cmplt, 0,1, Jz, 2,-1) \
    X(LoadLocal, LoadBy, -1,0, Cmpeq, -1,1, Jz, 2,-1) \
    X(Mulf, StorefBy, 0,-1, LoadLocal, -1,-1, Jz, 2,-1) \
    X(Subf, StorefAt, 0,-1, LoadAt, -1,-1, Jnz, 2,-1)

// Three.
#define HUM_FAST_THREES(X) \
    X(F2i, StoreLocal, 0,-1, LoadLocal, -1,-1) X(I2f, LoadLocal, -1,-1, LoadfBy, -1,1) \
    X(Lf, Lf, -1,-1, Lf, -1,-1) X(Lf, Lf, -1,-1, LoadLocal, -1,-1) X(Lf, Li, -1,-1, LoadAt, -1,-1) \
    X(Lf, Li, -1,-1, LoadfAt, -1,-1) X(Lf, LoadLocal, -1,-1, LoadfBy, -1,1) \
    X(Lf, LoadLocal, -1,-1, StorefBy, 0,1) X(Lf, LoadfAt, -1,-1, Mulf, 0,1) \
    X(Lf, LoadfLocal, -1,-1, Mulf, 0,1) X(Li, Lf, -1,-1, Lf, -1,-1) \
    X(Li, LoadLocal, -1,-1, StoreBy, 0,1) X(LoadAt, Li, -1,-1, Cmpgt, 0,1) \
    X(LoadLocal, Lea, -1,0, LoadLocal, -1,-1) X(LoadLocal, Li, -1,-1, Add, 0,1) \
    X(LoadLocal, LoadLocal, -1,-1, LoadBy, -1,1) X(LoadLocal, LoadLocal, -1,-1, StoreBy, 0,1) \
    X(LoadLocal, LoadfBy, -1,0, Fcmplt, -1,1) X(LoadLocal, LoadfBy, -1,0, Lf, -1,-1) \
    X(LoadLocal, LoadfBy, -1,0, Mulf, -1,1) X(LoadLocal, LoadfLocal, -1,-1, Lf, -1,-1) \
    X(LoadfAt, Addf, -1,0, Mulf, -1,1) X(LoadfAt, Lf, -1,-1, Addf, 0,1) \
    X(LoadfAt, Li, -1,-1, LoadAt, -1,-1) X(LoadfAt, LoadLocal, -1,-1, LoadfBy, -1,1) \
    X(LoadfAt, LoadfAt, -1,-1, Mulf, 0,1) X(LoadfAt, Mulf, -1,0, Addf, -1,1) \
    X(LoadfAt, Mulf, -1,0, LoadfAt, -1,-1) X(LoadfBy, LoadLocal, -1,-1, LoadfBy, -1,1) \
    X(LoadfLocal, Addf, -1,0, Mulf, -1,1) X(LoadfLocal, Lf, -1,-1, Addf, 0,1) \
    X(LoadfLocal, Lf, -1,-1, Divf, 0,1) X(LoadfLocal, LoadLocal, -1,-1, Lea, -1,1) \
    X(LoadfLocal, LoadLocal, -1,-1, LoadfBy, -1,1) X(LoadfLocal, Mulf, -1,0, Addf, -1,1) \
    X(Mulf, Addf, -1,0, StorefAt, 1,-1) X(Mulf, Addf, -1,0, StorefBy, 1,-1) \
    X(Mulf, Lf, -1,-1, Lf, -1,-1) X(Mulf, StorefAt, 0,-1, Li, -1,-1) \
    X(Mulf, StorefAt, 0,-1, LoadfAt, -1,-1) X(Mulf, StorefBy, 0,-1, LoadfLocal, -1,-1) \
    X(StoreAt, LoadAt, -1,-1, Lea, -1,1) X(StorefAt, Lf, -1,-1, LoadfAt, -1,-1) \
    X(StorefAt, LoadAt, -1,-1, LoadfBy, -1,1) X(StorefAt, LoadfAt, -1,-1, LoadfAt, -1,-1) \
    X(StorefLocal, LoadfLocal, -1,-1, Lf, -1,-1) \
    X(StorefLocal, LoadfLocal, -1,-1, LoadLocal, -1,-1) X(Subf, Mulf, -1,0, Addf, -1,1)

// Two and a jump.
#define HUM_FAST_THREE_JUMPS(X) \
    X(Lf, Fcmpgt, -1,0, Jz, 1,-1) X(Li, LoadAt, -1,-1, Jz, 1,-1) \
    X(LoadLocal, LoadBy, -1,0, Jz, 1,-1) X(LoadfLocal, Fcmple, -1,0, Jz, 1,-1) \
    X(Mul, Cmpeq, -1,0, Jz, 1,-1) X(Mulf, StorefBy, 0,-1, Jmp, -1,-1)

// Two.
#define HUM_FAST_TWOS(X) \
    X(Addf, Mulf, -1,0) X(Addf, StorefAt, 0,-1) X(Addf, StorefLocal, 0,-1) \
    X(Cmpeq, StoreLocal, 0,-1) X(Divf, StorefLocal, 0,-1) X(Lf, Lea, -1,-1) X(Lf, Lf, -1,-1) \
    X(Lf, Li, -1,-1) X(Lf, LoadfAt, -1,-1) X(Lf, StorefAt, 0,-1) X(Li, Add, -1,0) X(Li, Lf, -1,-1) \
    X(Li, Li, -1,-1) X(Li, LoadAt, -1,-1) X(Li, LoadfAt, -1,-1) X(Li, StoreAt, 0,-1) \
    X(Li, StoreLocal, 0,-1) X(LoadAt, Lea, -1,0) X(LoadAt, LoadfBy, -1,0) X(LoadLocal, Lea, -1,0) \
    X(LoadLocal, LoadBy, -1,0) X(LoadLocal, LoadLocal, -1,-1) X(LoadLocal, LoadfBy, -1,0) \
    X(LoadLocal, StoreBy, -1,0) X(LoadLocal, StorefBy, -1,0) X(LoadfAt, LoadAt, -1,-1) \
    X(LoadfAt, LoadfAt, -1,-1) X(LoadfAt, Mulf, -1,0) X(LoadfLocal, Lf, -1,-1) \
    X(LoadfLocal, LoadLocal, -1,-1) X(LoadfLocal, LoadfLocal, -1,-1) X(LoadfLocal, Mulf, -1,0) \
    X(LoadfLocal, Subf, -1,0) X(Mulf, Addf, -1,0) X(Mulf, Lf, -1,-1) X(Mulf, StorefAt, 0,-1) \
    X(Mulf, StorefBy, 0,-1) X(StorefAt, Li, -1,-1) X(StorefAt, LoadfAt, -1,-1) X(Subf, Mulf, -1,0)

// One and a jump.
#define HUM_FAST_TWO_JUMPS(X) \
    X(Cmpeq, Jz, 0,-1) X(Cmplt, Jz, 0,-1) X(Fcmpeq, Jz, 0,-1) X(Fcmpge, Jz, 0,-1) \
    X(Fcmpgt, Jz, 0,-1) X(Li, Jmp, -1,-1) X(LoadAt, Jz, 0,-1) X(LoadLocal, Jz, 0,-1)

// clang-format on
