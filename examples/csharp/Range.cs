/* Reads a part of a file and prints its bytes in hexadecimal.
 *
 *     Range HOST PATH OFFSET LENGTH      LENGTH: 1 to 4096
 *
 * Exit code: 0 the part has been printed, 1 it could not be had, 2 wrong arguments.
 *
 *     csc /platform:x86 Range.cs LMOnline.cs           (mcs -platform:x86 with Mono)
 */
using System;
using System.Runtime.InteropServices;
using Orvande;

static class Range
{
    static int Main(string[] values)
    {
        long offset = values.Length == 4 ? long.Parse(values[2]) : 0;
        int length = values.Length == 4 ? int.Parse(values[3]) : 0;
        if (offset < 0 || length < 1 || length > 4096)
        {
            Console.WriteLine("usage: Range HOST PATH OFFSET LENGTH (LENGTH: 1 to 4096)");
            return 2;
        }
        byte[] bytes = new byte[length];
        int result =
            LMOnline.LMReadWebFileRange(values[0], values[1], offset, length, bytes, null, IntPtr.Zero);
        int error = Marshal.GetLastWin32Error();
        if (result == length)
        {
            for (int i = 0; i < length; ++i)
                Console.Write("{0:x2}{1}", bytes[i], i % 16 == 15 || i + 1 == length ? "\n" : " ");
            return 0;
        }
        if (error == LMOnline.ReplyEnded)
            Console.WriteLine("the file ends before the part does");
        else if (LMOnline.KindOf(error) == LMOnline.HttpStatus)
            Console.WriteLine("the server refused: HTTP status {0}", LMOnline.StatusOf(error));
        else
            Console.WriteLine("failed: error 0x{0:X8}", error);
        return 1;
    }
}
