/* Asks the map shop what it has in a box on the map, and prints it.
 *
 *     Search [SOUTH WEST NORTH EAST]     in degrees; all maps of the shop without them
 *
 * Exit code: 0 the whole answer has been printed, 1 there was none or not all of it, 2 wrong arguments.
 *
 *     csc /platform:x86 Search.cs LMOnline.cs          (mcs -platform:x86 with Mono)
 */
using System;
using System.Globalization;
using System.Runtime.InteropServices;
using Orvande;

static class Search
{
    static int Main(string[] degrees)
    {
        if (degrees.Length != 0 && degrees.Length != 4)
        {
            Console.WriteLine("usage: Search [SOUTH WEST NORTH EAST]");
            return 2;
        }
        int[] box = new int[degrees.Length];
        for (int i = 0; i < degrees.Length; ++i)
            box[i] = (int)Math.Round(double.Parse(degrees[i], CultureInfo.InvariantCulture) * 100000);

        IntPtr search = LMOnline.LMMapShopSearch(box, box.Length / 4);
        int error = Marshal.GetLastWin32Error();
        MapShopResult map;
        while (LMOnline.LMMapShopGetNext(search, out map) != 0)
            Console.WriteLine("{0}, {1} KB, {2}", map.Text1, map.Number, map.Text2);
        Console.WriteLine("{0} maps in the shop", LMOnline.LMMapShopClose(search));
        if (error == 0) return 0;
        Console.WriteLine("this is not all: error 0x{0:X8}", error);
        return 1;
    }
}
