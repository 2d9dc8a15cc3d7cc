{ Prints the SHA-1 digest of the words on the command line, through the service-provider layer. For Delphi and for
  Free Pascal, whose Linux programs take the same declarations without the decoration of the names. }
program digest;

{$IFDEF FPC}{$MODE DELPHI}{$PACKRECORDS C}{$ENDIF}
{$APPTYPE CONSOLE}

const
  ContextDigest = 5;
  AlgorithmSha1 = 8;
{$IFDEF MSWINDOWS}
  MorvaneCrypto = 'MorvaneCrypto.dll';
  InitName = '_CSP_DigestDataInit@12';
  UpdateName = '_CSP_DigestDataUpdate@16';
  FinalName = '_CSP_DigestDataFinal@12';
{$ELSE}
  MorvaneCrypto = 'MorvaneCrypto';
  InitName = 'CSP_DigestDataInit';
  UpdateName = 'CSP_DigestDataUpdate';
  FinalName = 'CSP_DigestDataFinal';
{$ENDIF}

type
  { cssm_data }
  TCssmData = record
    Length: Cardinal;
    Data: Pointer;
  end;

  { CspSession: the caller sets the first four fields of a record of zeros, its address is the handle }
  TCspSession = record
    ContextType, Algorithm, NumberOfAttributes: Cardinal;
    Attributes, CipherTable, DigestTable, State, MacTable: Pointer;
    Chain: array[0..15] of Byte;
    Carried: array[0..1023] of Byte;
    CarriedBytes: Cardinal;
  end;

function CSP_DigestDataInit(Csp: Cardinal; var Session: TCspSession; Context: Pointer): Integer; stdcall;
  external MorvaneCrypto name InitName;
function CSP_DigestDataUpdate(Csp: Cardinal; var Session: TCspSession; var Buffers: TCssmData; Count: Cardinal): Integer;
  stdcall; external MorvaneCrypto name UpdateName;
function CSP_DigestDataFinal(Csp: Cardinal; var Session: TCspSession; var Output: TCssmData): Integer; stdcall;
  external MorvaneCrypto name FinalName;
function GetError: Cardinal; cdecl; external MorvaneCrypto name 'GetError';

procedure Check(Code: Integer);
begin
  if Code <> 0 then
  begin
    Writeln('digest failed: ', GetError);
    Halt(1);
  end;
end;

const
  Digits: array[0..15] of AnsiChar = '0123456789abcdef';
var
  Session: TCspSession;
  Piece, Output: TCssmData;
  Octets: array[0..19] of Byte;
  Word: AnsiString;
  I: Integer;
begin
  FillChar(Session, SizeOf(Session), 0);
  Session.ContextType := ContextDigest;
  Session.Algorithm := AlgorithmSha1;
  Check(CSP_DigestDataInit(0, Session, nil));
  for I := 1 to ParamCount do
  begin
    Word := AnsiString(ParamStr(I));
    Piece.Length := Length(Word);
    Piece.Data := PAnsiChar(Word);
    Check(CSP_DigestDataUpdate(0, Session, Piece, 1));
  end;
  Output.Length := SizeOf(Octets);
  Output.Data := @Octets;
  Check(CSP_DigestDataFinal(0, Session, Output));
  for I := 0 to 19 do Write(Digits[Octets[I] shr 4], Digits[Octets[I] and 15]);
  Writeln;
end.
