/* Downloads a file, shows how far it is, and cancels a download that becomes too large.
 *
 *     Download HOST PATH FILE [MOST]     MOST: how many bytes FILE may have; any number without it
 *
 * On a handheld FILE is a whole path, because there is no current folder. Exit code: 0 FILE is there, 1 it is
 * not, 2 wrong arguments.
 *
 *     csc /platform:x86 Download.cs LMOnline.cs        (mcs -platform:x86 with Mono)
 */
using System;
using System.Runtime.InteropServices;
using Orvande;

class Download
{
    readonly IntPtr memory = Marshal.AllocHGlobal(Marshal.SizeOf(typeof(DownloadProgress)));
    readonly long most;
    long tenthsShown;

    Download(long mostBytes)
    {
        most = mostBytes;
        DownloadProgress nothing;
        nothing.BytesReceived = 0;
        nothing.TotalBytes = -1;
        Marshal.StructureToPtr(nothing, memory, false);
    }

    DownloadProgress Progress
    {
        get { return (DownloadProgress)Marshal.PtrToStructure(memory, typeof(DownloadProgress)); }
    }

    int OnRead(IntPtr context)
    {
        DownloadProgress progress = Progress;
        if (progress.TotalBytes > most || progress.BytesReceived > most) return 0;
        if (progress.TotalBytes <= 0) return 1;
        long tenths = 10 * progress.BytesReceived / progress.TotalBytes;
        if (tenths > tenthsShown) Console.WriteLine("{0}%", 10 * tenths);
        tenthsShown = tenths;
        return 1;
    }

    int Run(string host, string path, string file)
    {
        ProgressCallback callback = OnRead;
        int isThere = LMOnline.LMDownloadWebFileProgress(host, path, file, callback, IntPtr.Zero, memory);
        int error = Marshal.GetLastWin32Error();
        GC.KeepAlive(callback);
        long received = Progress.BytesReceived;
        Marshal.FreeHGlobal(memory);

        // A reply that ended before its announced length is there, too, and only the last error tells.
        if (isThere != 0 && error == 0)
        {
            Console.WriteLine("{0} bytes", received);
            return 0;
        }
        if (error == LMOnline.Cancelled)
            Console.WriteLine("cancelled: the file is too large");
        else if (LMOnline.KindOf(error) == LMOnline.HttpStatus)
            Console.WriteLine("the server refused: HTTP status {0}", LMOnline.StatusOf(error));
        else
            Console.WriteLine("failed: error 0x{0:X8}", error);
        return 1;
    }

    static int Main(string[] values)
    {
        if (values.Length != 3 && values.Length != 4)
        {
            Console.WriteLine("usage: Download HOST PATH FILE [MOST]");
            return 2;
        }
        long most = values.Length == 4 ? long.Parse(values[3]) : long.MaxValue;
        return new Download(most).Run(values[0], values[1], values[2]);
    }
}
