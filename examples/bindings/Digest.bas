Attribute VB_Name = "Digest"
' The SHA-1 digest of a text, for Visual Basic 6 and for VBA of 32-bit Office, through the service-provider layer:
' Debug.Print Sha1OfText("abc")
Option Explicit

Private Const CONTEXT_DIGEST As Long = 5
Private Const ALGORITHM_SHA1 As Long = 8

Private Type CssmData
    Length As Long
    Data As Long ' an address
End Type

' The caller sets the first four fields of a record of zeros; its address is the handle. 1076 bytes.
Private Type CspSession
    ContextType As Long
    Algorithm As Long
    NumberOfAttributes As Long
    Attributes As Long
    Tables(0 To 3) As Long
    Chain(0 To 15) As Byte
    Carried(0 To 1023) As Byte
    CarriedBytes As Long
End Type

Private Declare Function CSP_DigestDataInit Lib "MorvaneCrypto.dll" Alias "_CSP_DigestDataInit@12" ( _
    ByVal csp As Long, ByRef session As CspSession, ByVal context As Long) As Long
Private Declare Function CSP_DigestDataUpdate Lib "MorvaneCrypto.dll" Alias "_CSP_DigestDataUpdate@16" ( _
    ByVal csp As Long, ByRef session As CspSession, ByRef buffers As CssmData, ByVal count As Long) As Long
Private Declare Function CSP_DigestDataFinal Lib "MorvaneCrypto.dll" Alias "_CSP_DigestDataFinal@12" ( _
    ByVal csp As Long, ByRef session As CspSession, ByRef output As CssmData) As Long

Public Function Sha1OfText(ByVal text As String) As String
    Dim session As CspSession, piece As CssmData, output As CssmData
    Dim octets() As Byte, digest(0 To 19) As Byte, i As Long
    session.ContextType = CONTEXT_DIGEST
    session.Algorithm = ALGORITHM_SHA1
    If CSP_DigestDataInit(0, session, 0) <> 0 Then Err.Raise vbObjectError, , "no digest"
    If Len(text) > 0 Then
        octets = StrConv(text, vbFromUnicode)
        piece.Length = UBound(octets) + 1
        piece.Data = VarPtr(octets(0))
        If CSP_DigestDataUpdate(0, session, piece, 1) <> 0 Then Err.Raise vbObjectError, , "no digest"
    End If
    output.Length = 20
    output.Data = VarPtr(digest(0))
    If CSP_DigestDataFinal(0, session, output) <> 0 Then Err.Raise vbObjectError, , "no digest"
    For i = 0 To 19
        Sha1OfText = Sha1OfText & LCase$(Right$("0" & Hex$(digest(i)), 2))
    Next i
End Function
