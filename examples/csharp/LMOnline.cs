/* OrvandeOnline.dll for C#: what include/LMOnline.h declares, under the same names; that header is the manual.
 *
 * For .NET Framework 2.0 and later, in a 32-bit process (csc /platform:x86), and for .NET Compact Framework 2.0
 * and later. Version 1.0 of that has neither texts within records, nor callbacks, nor 64-bit arguments.
 *
 * What differs between the two, from their documentation; nothing of it has been tried on a handheld:
 *   - x86 has several calling conventions, and the library's functions and its callback have that of C, which
 *     has to be said. Windows CE has one. So the Compact Framework neither has the attribute for callbacks
 *     (UnmanagedFunctionPointer) nor the choice of a convention at functions, which it takes for the system's.
 *   - The Compact Framework passes all text as UTF-16, and says so with CharSet.Unicode as the desktop does.
 *
 * Visual Studio defines the names of the first line in projects for handhelds.
 */
#if PocketPC || Smartphone || WindowsCE
#define COMPACT_FRAMEWORK
#endif

using System;
using System.Runtime.InteropServices;

namespace Orvande
{
    /* One map of the shop; 2604 bytes. */
    [StructLayout(LayoutKind.Sequential, CharSet = CharSet.Unicode)]
    public struct MapShopResult
    {
        public int Number;
        [MarshalAs(UnmanagedType.ByValTStr, SizeConst = 200)]
        public string Text1;
        [MarshalAs(UnmanagedType.ByValTStr, SizeConst = 100)]
        public string Text2;
        [MarshalAs(UnmanagedType.ByValTStr, SizeConst = 1000)]
        public string Text3;
    }

    /* How far a download is; 16 bytes. */
    [StructLayout(LayoutKind.Sequential)]
    public struct DownloadProgress
    {
        public long BytesReceived;
        public long TotalBytes; // -1 when it is not known
    }

    /* Returns 0 to cancel. No exception may leave it. Whoever passes one to a function keeps it in a variable
     * until the function has returned (GC.KeepAlive): the garbage collector does not know that it is in use. */
#if !COMPACT_FRAMEWORK
    [UnmanagedFunctionPointer(CallingConvention.Cdecl)]
#endif
    public delegate int ProgressCallback(IntPtr context);

    /* After each, Marshal.GetLastWin32Error() tells the cause: 0, or a code of LMOnline.h. */
    public static class LMOnline
    {
        public const int BadArgument = 0x20000001;
        public const int Cancelled = 0x20000002;
        public const int ReplyEnded = 0x20000003;
        public const int HttpStatus = 0x21000000;
        public const int ServiceStatus = 0x22000000;

        /* Takes HttpStatus + 404 apart. */
        public static int KindOf(int error) { return error & ~0xFFFFFF; }
        public static int StatusOf(int error) { return error & 0xFFFFFF; }

        const string Library = "OrvandeOnline.dll";
#if COMPACT_FRAMEWORK
        const CallingConvention C = CallingConvention.Winapi;
#else
        const CallingConvention C = CallingConvention.Cdecl;
#endif

        /* `items`: four numbers for each box; null, and a count of 0, for all maps. */
        [DllImport(Library, CallingConvention = C, SetLastError = true)]
        public static extern IntPtr LMMapShopSearch(int[] items, int count);

        [DllImport(Library, CallingConvention = C, SetLastError = true)]
        public static extern int LMMapShopGetNext(IntPtr search, out MapShopResult record);

        [DllImport(Library, CallingConvention = C, SetLastError = true)]
        public static extern int LMMapShopClose(IntPtr search);

        /* `progress`: memory of a DownloadProgress that stays where it is (Marshal.AllocHGlobal), because the
         * library writes to it while the callback runs; or IntPtr.Zero. */
        [DllImport(Library, CallingConvention = C, SetLastError = true, CharSet = CharSet.Unicode)]
        public static extern int LMDownloadWebFileProgress(string host, string urlPath, string localFile,
            ProgressCallback callback, IntPtr context, IntPtr progress);

        [DllImport(Library, CallingConvention = C, SetLastError = true, CharSet = CharSet.Unicode,
            EntryPoint = "x77fc64c7")]
        public static extern int LMDownloadWebFile(string host, string urlPath, string localFile,
            ProgressCallback callback, IntPtr context);

        [DllImport(Library, CallingConvention = C, SetLastError = true, CharSet = CharSet.Unicode,
            EntryPoint = "xfa704a3f")]
        public static extern int LMReadWebFileRange(string host, string urlPath, long offset, int length,
            byte[] buffer, ProgressCallback callback, IntPtr context);
    }
}
