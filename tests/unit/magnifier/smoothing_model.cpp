#include "tests/unit/magnifier/smoothing_model.h"

#include <algorithm>
#include <map>

#include "tests/unit/magnifier/pictures.h"

namespace smoothing_model {

namespace {

    int Brightness(char letter)
    {
        static const std::map<char, int> sums = {{'W', 765}, {'Y', 510}, {'R', 255}, {'G', 255}, {'B', 255}, {'.', 0}};
        return sums.at(letter);
    }

    struct Model {
        const std::string& source;
        const Rules& rules;
        int width, height;
        std::string target;

        char At(int x, int y) const { return source.at(y * (width + 1) + x); }
        bool IsInside(int x, int y) const { return x >= 0 && y >= 0 && x < width && y < height; }
        void Paint(int x, int y, char colour) { target.at(y * (width * rules.xFactor + 1) + x) = colour; }

        char Choose(char first, char second) const
        {
            const int a = Brightness(first), b = Brightness(second);
            return (rules.darkerWins ? a < b : a > b) ? first : second;
        }

        void SmoothTwoByTwo();
        void SmoothCell(int x, int y);
        bool IsCorner(int x, int y) const;
        bool Both(int ax, int ay, int bx, int by, char c) const;
        char Winner(int x, int y) const;

        void SmoothFourByFour();
        bool Grow(int q, int x, int y) const;
        int Leg(int q, int x, int y) const;
        bool IsVisited(int x, int y) const { return x >= 2 && y >= 2 && x + 1 < width && y + 1 < height; }
        void Fill(int q, int x, int y, int leg, int u0, int w0, char colour);
    };

    bool Model::Both(int ax, int ay, int bx, int by, char c) const
    {
        return IsInside(ax, ay) && IsInside(bx, by) && At(ax, ay) == c && At(bx, by) == c;
    }

    bool Model::IsCorner(int x, int y) const
    {
        const char tl = At(x - 1, y - 1), tr = At(x, y - 1), bl = At(x - 1, y), br = At(x, y);
        if (bl == tr && tr == br)
            return Both(x, y - 2, x - 2, y, br);
        if (tl == tr && tr == bl)
            return Both(x - 1, y + 1, x + 1, y - 1, tl);
        if (tl == tr && tr == br)
            return Both(x - 2, y - 1, x, y + 1, tl);
        if (tl == bl && bl == br)
            return Both(x - 1, y - 2, x + 1, y, tl);
        return false;
    }

    char Model::Winner(int x, int y) const
    {
        const char tl = At(x - 1, y - 1), tr = At(x, y - 1);
        return tl == tr ? Choose(At(x - 1, y), At(x, y)) : Choose(tl, tr);
    }

    void Model::SmoothCell(int x, int y)
    {
        const char tl = At(x - 1, y - 1), tr = At(x, y - 1), bl = At(x - 1, y), br = At(x, y);
        const int s = std::min(rules.xFactor, rules.yFactor), jx = x * rules.xFactor, jy = y * rules.yFactor;
        const bool keeps = rules.improveFactor == 2;
        if ((br == tl && br == bl && br == tr) || (br != tl && tr != bl) || (keeps && IsCorner(x, y)))
            return;
        const bool left = !keeps || x - 2 >= 0, right = !keeps || x + 1 < width;
        const bool above = !keeps || y - 2 >= 0, below = !keeps || y + 1 < height;
        const char w0 = Winner(x, y);
        if (br == tl && w0 != tl) {
            if (br != bl && Choose(bl, br) == bl && left && below)
                for (int k = 0; k <= s - 2; ++k)
                    for (int c = jx - 1; c >= jx - s + k + 1; --c)
                        Paint(c, jy + k, br);
            if (br != tr && Choose(br, tr) == tr && above && right)
                for (int k = 0; k <= s - 2; ++k)
                    for (int c = jx; c <= jx + s - 2 - k; ++c)
                        Paint(c, jy - 1 - k, br);
        }
        if (tr == bl && w0 != tr) {
            if (tr != tl && Choose(tl, tr) == tl && above && left)
                for (int k = 0; k <= s - 2; ++k)
                    for (int c = jx - 1; c >= jx - s + 1 + k; --c)
                        Paint(c, jy - 1 - k, tr);
            if (tr != br && Choose(tr, br) == br && below && right)
                for (int k = 0; k <= s - 2; ++k)
                    for (int c = jx; c <= jx + s - 2 - k; ++c)
                        Paint(c, jy + k, tr);
        }
    }

    void Model::SmoothTwoByTwo()
    {
        for (int y = 1; y < height; ++y)
            for (int x = 1; x < width; ++x)
                SmoothCell(x, y);
    }

    struct Corner {
        int bx, by, hx, hy, vx, vy, dx, dy, ox, oy;
    };
    enum { LL, UR, UL, LR };
    constexpr Corner corners[] = {
        {-1, 0, 0, 0, -1, -1, 0, -1, -1, 1},
        {0, -1, -1, -1, 0, 0, -1, 0, 1, -1},
        {-1, -1, 0, -1, -1, 0, 0, 0, -1, -1},
        {0, 0, -1, 0, 0, -1, -1, -1, 1, 1},
    };

    bool Model::Grow(int q, int x, int y) const
    {
        const Corner& k = corners[q];
        const char b = At(x + k.bx, y + k.by), h = At(x + k.hx, y + k.hy), v = At(x + k.vx, y + k.vy);
        if (v != h || b == h)
            return false;
        const char chosen = q == LL || q == UL ? Choose(b, h) : Choose(v, b);
        return chosen == b && Winner(x, y) != h;
    }

    // 0: equal legs, 1: twice as wide, 2: twice as high.
    int Model::Leg(int q, int x, int y) const
    {
        const Corner& k = corners[q];
        const char c = At(x + k.hx, y + k.hy), b = At(x + k.bx, y + k.by);
        const bool h = At(x + k.vx + k.ox, y + k.vy) == c && At(x + k.bx + k.ox, y + k.by) == b;
        const bool v = At(x + k.hx, y + k.hy + k.oy) == c && At(x + k.bx, y + k.by + k.oy) == b;
        if (h == v)
            return 0;
        const bool thin = At(x + k.dx, y + k.dy) != c;
        if (thin)
            return h ? 1 : 2;
        if (h)
            return At(x + k.hx, y + k.hy + k.oy) != c && At(x + k.vx, y + k.vy - k.oy) == c
                    && At(x + k.vx + k.ox, y + k.vy - k.oy) == c
                ? 1
                : 0;
        return At(x + k.vx + k.ox, y + k.vy) != c && At(x + k.hx - k.ox, y + k.hy) == c
                && At(x + k.hx - k.ox, y + k.hy + k.oy) == c
            ? 2
            : 0;
    }

    void Model::Fill(int q, int x, int y, int leg, int u0, int w0, char colour)
    {
        const Corner& k = corners[q];
        const int a = rules.xFactor * (leg == 1 ? 2 : 1), l = rules.yFactor * (leg == 2 ? 2 : 1);
        for (int u = 0; u < rules.xFactor; ++u)
            for (int w = 0; w < rules.yFactor; ++w)
                if ((2 * (u + u0) + 1) * l + (2 * (w + w0) + 1) * a < 2 * a * l)
                    Paint(x * rules.xFactor + (k.ox > 0 ? u : -1 - u), y * rules.yFactor + (k.oy > 0 ? w : -1 - w),
                          colour);
    }

    void Model::SmoothFourByFour()
    {
        for (int y = 2; y < height - 1; ++y)
            for (int x = 2; x < width - 1; ++x)
                for (int q = LL; q <= LR; ++q) {
                    const Corner& k = corners[q];
                    if (!IsCorner(x, y) && Grow(q, x, y))
                        Fill(q, x, y, Leg(q, x, y), 0, 0, At(x + k.hx, y + k.hy));
                    const int sx = x - k.ox, sy = y - k.oy;
                    if (IsVisited(sx, y) && Grow(q, sx, y) && Leg(q, sx, y) == 1)
                        Fill(q, x, y, 1, rules.xFactor, 0, At(sx + k.hx, y + k.hy));
                    if (IsVisited(x, sy) && Grow(q, x, sy) && Leg(q, x, sy) == 2)
                        Fill(q, x, y, 2, 0, rules.yFactor, At(x + k.hx, sy + k.hy));
                }
    }

} // namespace

std::string Smooth(const std::string& picture, const Rules& rules)
{
    const SIZEL size = pictures::SizeOf(picture);
    Model model = {picture, rules, size.cx, size.cy, pictures::Stretched(picture, rules.xFactor, rules.yFactor)};
    if (rules.improveFactor == 3)
        model.SmoothFourByFour();
    else
        model.SmoothTwoByTwo();
    return model.target;
}

} // namespace smoothing_model
