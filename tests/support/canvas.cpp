#include "tests/support/canvas.h"

std::string Canvas::Picture() const
{
    const struct {
        COLORREF color;
        char letter;
    } letters[] = {{RGB(255, 255, 255), '.'}, {RGB(0, 0, 0), '#'},    {RGB(255, 0, 0), 'R'},
                   {RGB(0, 255, 0), 'G'},     {RGB(0, 0, 255), 'B'},  {RGB(0, 255, 255), 'C'},
                   {RGB(255, 0, 255), 'M'},   {RGB(255, 255, 0), 'Y'}};
    std::string rows;
    for (int y = 0; y < height; y++) {
        for (int x = 0; x < width; x++) {
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
