#include "tests/support/canvas.h"

std::string Canvas::Picture(int left, int top, int right, int bottom) const
{
    const struct {
        COLORREF color;
        char letter;
    } letters[] = {{RGB(255, 255, 255), '.'}, {RGB(0, 0, 0), '#'},    {RGB(255, 0, 0), 'R'},
                   {RGB(0, 255, 0), 'G'},     {RGB(0, 0, 255), 'B'},  {RGB(0, 255, 255), 'C'},
                   {RGB(255, 0, 255), 'M'},   {RGB(255, 255, 0), 'Y'}};
    std::string rows;
    for (int y = top; y < bottom; y++) {
        for (int x = left; x < right; x++) {
            char letter = '?';
            for (const auto &row : letters)
                if (row.color == At(x, y))
                    letter = row.letter;
            rows += letter;
        }
        rows += '\n';
    }
    return rows;
}

std::string Canvas::Picture() const
{
    return Picture(0, 0, width, height);
}
