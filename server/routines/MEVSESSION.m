MEVSESSION ; One session: frames in, calls carried out, frames out
 ; Reads request frames from standard input, dispatches them by a fixed table and answers each with one frame.
 ; Does not know what the calls do. A call's error ends the call, never the session.
 ;
 ; The session's own variables: session (its number), token (its name, by the host), user (number, 0 before sign-on),
 ; busy (a frame is being worked on or written), wake (an event came in meanwhile), input (the device of requests),
 ; writing (a frame is half written), stream ("socket" or "pipe"), waiting (the stack level of LISTEN while it waits, else 0),
 ; person (the user's name), speaks (the protocol's version that the host speaks), seen (whom the user looked at: MEVAUDIT),
 ; turns (waits of 20 s inside the frame), row (refusals since the last change), tired (the session ends after the answer).
 ;
SERVE ; Entry: serves until the input ends
 NEW busy,calls,ended,input,param,person,row,seen,session,speaks,stream,tired,token,turns,user,waiting,wake,writing
 SET $ETRAP="GOTO BROKEN^MEVSESSION"
 SET busy=1,wake=0,writing=0,waiting=0,ended=0,user=0,token="",person="",speaks=1,(row,tired)=0,seen=0,seen("count")=0
 SET $ZINTERRUPT="DO WAKE^MEVEVENTS"
 DO OPENINPUT
 DO LOADTABLE
 DO READY^MEVDATAVERSION
 DO OPEN^MEVEVENTS
 FOR  DO NEXT QUIT:ended
 DO CLOSE^MEVEVENTS
 HALT
 ;
OPENINPUT ; Sets the streams up: bytes as they are, both ways
 SET stream=$SELECT($ZTRNLNM("mev_stream")="socket":"socket",1:"pipe")
 IF stream="socket" SET input=$PRINCIPAL USE $PRINCIPAL:(NODELIMITER:WIDTH=1048576:ZNODELAY) QUIT
 USE $PRINCIPAL:(NOWRAP:WIDTH=1048576:NOESCAPE)
 ; A second opening of the input: the principal device would stop a read at each line feed.
 SET input="/dev/stdin"
 OPEN input:(FIFO:FIXED:READONLY:NOWRAP:RECORDSIZE=1048576)
 QUIT
 ;
BROKEN ; The session cannot go on: its database is out of reach, or its client. Says so where a frame can still be sent.
 SET $ETRAP="ZHALT 9"
 IF 'writing DO FAILED(0,"The server cannot go on: "_$$REASON($ZSTATUS))
 ZHALT 9
 ;
REASON(status) ; The engine's word for an error and its message, such as UNDEF, Undefined local variable: x
 NEW text
 SET text=$PIECE(status,",",3,99)
 IF text["-E-" SET text=$PIECE(text,"-E-",2,99)
 QUIT $TRANSLATE($EXTRACT(text,1,200),$CHAR(10,13),"  ")_"."
 ;
NEXT ; Works on one request
 NEW length,body
 DO FLUSH^MEVEVENTS
 IF stream="socket",'$$LISTEN QUIT
 SET turns=0
 IF '$$READ(8,.length) SET ended=1 QUIT
 SET busy=1
 IF length'?8N DO FAILED(0,"The request's length is not eight digits.") SET ended=1 QUIT
 IF length>1000000 DO SKIP(length) QUIT
 IF '$$READ(+length,.body) SET ended=1 QUIT
 DO REQUEST(body)
 QUIT
 ;
LISTEN() ; Waits for the first byte of a request on a socket; false where an event came first, or nothing for a while
 ; A read of a socket that a signal interrupts would not let the event be written, so the wait is left instead.
 NEW ready
 SET ready=0,waiting=$ZLEVEL
 USE $PRINCIPAL
 IF 'wake WRITE /WAIT(20) SET ready=$TEST
HEARD SET waiting=0,busy=1
 QUIT ready
 ;
READ(count,data) ; Reads exactly this many bytes; false at the end of the input, and when a frame stays half for a minute
 ; Waits in turns: a signal that comes while another one is being worked on is lost, its event is sent at the next turn.
 NEW part
 SET data=""
 USE input
 FOR  QUIT:$LENGTH(data)=count  READ part#(count-$LENGTH(data)):20 DO  QUIT:$ZEOF&(part="")  QUIT:turns>2  DO TURN
 . IF '$TEST,busy!(data_part'="") SET turns=turns+1
 . SET data=data_part
 USE $PRINCIPAL
 IF turns>2 DO FAILED(0,"The rest of the request did not come within a minute.")
 QUIT $LENGTH(data)=count
 ;
TURN ; Between two waits inside READ
 QUIT:busy
 DO SENDALL^MEVEVENTS
 USE input
 QUIT
 ;
SKIP(length) ; Reads and drops a request that is too long
 NEW head,number,part,reply,rest
 IF '$$READ(200,.head) SET ended=1 QUIT
 SET rest=length-200
 FOR  QUIT:rest<1  QUIT:ended  SET ended='$$READ($SELECT(rest>32000:32000,1:rest),.part),rest=rest-32000
 QUIT:ended
 ; A refusal, so that the form that asked for it keeps what was entered.
 SET number=$$NUMBER($PIECE(head,$CHAR(10)))
 IF number,user SET reply="-1^The request is longer than 1,000,000 bytes." DO ANSWER(number) QUIT
 DO FAILED(number,"The request is longer than 1,000,000 bytes.")
 QUIT
 ;
NUMBER(text) ; The request's number, from the text before the first blank; 0 for what is no number
 SET text=$PIECE(text," ")
 QUIT $SELECT(text?1.15N:+text,1:0)
 ;
REQUEST(body) ; Number and purpose, name, parameter, parted by line feeds
 NEW name,number,purpose
 SET number=$$NUMBER($PIECE(body,$CHAR(10)))
 IF number=0 DO FAILED(0,"The request has no number.") QUIT
 SET purpose=$PIECE($EXTRACT($PIECE(body,$CHAR(10)),1,1000)," ",2,999)
 IF purpose'=""," LIST EDIT CHECK "'[(" "_$PIECE(purpose," ")_" ") DO FAILED(number,"The request's purpose is not known.") QUIT
 IF $LENGTH(body,$CHAR(10))<3 DO FAILED(number,"The request has no name.") QUIT
 SET name=$PIECE(body,$CHAR(10),2),param=$PIECE(body,$CHAR(10),3,$LENGTH(body))
 IF name="" DO FAILED(number,"The request has no name.") QUIT
 IF '$DATA(calls(name)) DO FAILED(number,"The server has no call named '"_$$BRIEF^MEVTEXT(name,60)_"'.") QUIT
 IF 'user,$PIECE(calls(name),";",2)'["O" DO FAILED(number,"Sign on first.") QUIT
 DO CALL(number,name)
 QUIT
 ;
CALL(number,name) ; Carries a call out and answers it. The answer is sent outside the call's trap: half a frame cannot be mended.
 NEW failure,filed,reply
 SET failure="",filed=0,reply=""
 DO TRY(number,name)
 ; A save that was not made is refused like one with a bad value, so that the client keeps what was entered.
 IF failure'="",'filed,$PIECE(calls(name),";",2)["W" KILL reply SET reply="-1^"_$TRANSLATE(failure,"^"," "),failure=""
 IF failure'="" DO FAILED(number,failure) QUIT
 DO ANSWER(number)
 IF tired DO FAILED(0,"Too many calls were refused: the server ends this session.") SET ended=1
 QUIT
 ;
TRY(number,name) ; Under its own trap: sets reply, or failure to a sentence
 NEW $ETRAP,flags,level,most
 SET level=$ZLEVEL
 SET $ETRAP="ZGOTO level:UNDO^MEVSESSION"
 SET flags=$PIECE(calls(name),";",2),failure=$$FORBIDDEN^MEVLIMITS(flags)
 IF failure'="" DO NO^MEVSAVE(failure),SLOW^MEVLIMITS($$PATIENCE^MEVLIMITS+1) SET failure="" QUIT
 SET most=+$PIECE(flags,"W",2)
 ; The rest of a text with a "^" would stand in another's place, or be lost.
 IF most,$LENGTH(param,"^")>most DO NO^MEVSAVE("A text cannot hold a ""^"": nothing was saved.") QUIT
 IF flags["W" DO ONCE^MEVTRANSACTION(number,name,$PIECE(calls(name),";")) QUIT
 IF purpose="LIST"!(purpose="EDIT") DO READ^MEVCONFLICTS(number,$PIECE(calls(name),";"))
 IF purpose'="LIST",purpose'="EDIT" DO @$PIECE(calls(name),";") ; from the table below, never from a client
 IF flags["R",$EXTRACT(reply,1,3)'="-1^" DO LOOK^MEVAUDIT(name)
 QUIT
 ;
UNDO ; What is left of a failed call is undone, the session goes on
 SET $ETRAP="GOTO BROKEN^MEVSESSION"
 SET failure=$SELECT(filed:"The change was made, but then the server failed: ",1:"The server could not carry out "_name_": ")
 SET failure=failure_$$REASON($ZSTATUS),$ECODE=""
 IF $TLEVEL TROLLBACK
 LOCK  ; the call's locks; the session's own is held by ZALLOCATE
 KILL signals
 QUIT
 ;
ANSWER(number) ; Sends reply, or the lines reply(1), reply(2) ... each with its line end
 ; A client tells an error by the number that a reply begins with. Only a refusal, "-1" and a sentence, may begin so.
 NEW chunk,index,total
 IF '$DATA(reply(1)) DO FRAME("R"_number_$CHAR(10)_$SELECT(reply?1"-1^"1.E:reply,1:$$GUARDED^MEVTEXT(reply))) QUIT
 SET reply(1)=$$GUARDED^MEVTEXT(reply(1))
 SET total=0
 FOR index=1:1 QUIT:'$DATA(reply(index))  SET total=total+$LENGTH(reply(index))+2
 SET chunk="R"_number_$CHAR(10)
 SET chunk=$$EIGHT(total+$LENGTH(chunk))_chunk
 FOR index=1:1 QUIT:'$DATA(reply(index))  DO
 . SET chunk=chunk_reply(index)_$CHAR(13,10)
 . IF $LENGTH(chunk)>32000 DO PUT(chunk) SET chunk=""
 DO PUT(chunk)
 QUIT
 ;
FAILED(number,text) ; Sends a failure
 DO FRAME("F"_number_$CHAR(10)_text)
 QUIT
 ;
FRAME(body) ; Sends one frame
 DO PUT($$EIGHT($LENGTH(body))_body)
 QUIT
 ;
PUT(bytes) ; Writes bytes as they are
 SET writing=1
 USE $PRINCIPAL
 WRITE bytes
 SET $X=0,writing=0
 QUIT
 ;
EIGHT(number) ; Eight digits
 QUIT $TRANSLATE($JUSTIFY(number,8)," ","0")
 ;
LOADTABLE ; calls(name)=entry;flags
 NEW line,text
 FOR line=1:1 SET text=$PIECE($TEXT(TABLE+line),";;",2,3) QUIT:text=""  SET calls($PIECE(text,";"))=$PIECE(text,";",2,3)
 QUIT
 ;
TABLE ; name;entry;flags: O open before sign-on, W changes data, W7 of at most 7 pieces, R shows a patient's data, L of at most so many bytes
 ;;MEVHOST USERS;USERS^MEVHOSTCALLS;O
 ;;MEVHOST SIGNON;SIGNON^MEVHOSTCALLS;O
 ;;MEVHOST KEYS;KEYS^MEVHOSTCALLS;L100000
 ;;MEVHOST PATIENTS;PATIENTS^MEVHOSTCALLS;
 ;;MEVHOST PATIENT;PATIENT^MEVHOSTCALLS;R
 ;;MEVHOST VISITS;VISITS^MEVHOSTCALLS;R
 ;;MEVHOST VISIT;VISIT^MEVHOSTCALLS;R
 ;;MEVHOST SUBSCRIBE;SUBSCRIBE^MEVEVENTS;
 ;;MEVHOST UNSUBSCRIBE;DROP^MEVEVENTS;
 ;;MEVUTL CHKSEC;CHKSEC^MEVKEYS;L100000
 ;;MEVUTL GETPARM;GETPARM^MEVKEYS;
 ;;MEVUTL SETPARM;SETPARM^MEVKEYS;W2
 ;;MEVUTL GETRPT;GETRPT^MEVREPORT;R
 ;;MEVUTL DICLKUP;DICLKUP^MEVLOOKUP;
 ;;MEVICDLK ICDLKUP;ICDLKUP^MEVLOOKUP;
 ;;MEVUTL ICDLEX;ICDLKUP^MEVLOOKUP;
 ;;MEVVCPT CPTLKUP;CPTLKUP^MEVLOOKUP;
 ;;MEVUTL LEXLKUP;CPTLKUP^MEVLOOKUP;
 ;;MEVCPTPR OTHCATS;OTHCATS^MEVLOOKUP;
 ;;MEVVTC CMLKUP;CMLKUP^MEVLOOKUP;
 ;;MEVREP SET;REP^MEVSAVEPATIENT;W8
 ;;MEVREP DEL;ONLY^MEVDELETE;W
 ;;MEVBMSR SET;BMSR^MEVSAVEPATIENT;W7
 ;;MEVBMSR DEL;ONLY^MEVDELETE;W
 ;;MEVVIF SET;VIF^MEVSAVEVISIT;W3
 ;;MEVVIF DEL;RECORD^MEVDELETE;W
 ;;MEVVELD SET;VELD^MEVSAVEVISIT;W16
 ;;MEVVELD DEL;RECORD^MEVDELETE;W
 ;;MEVVAST SET;VAST^MEVSAVEVISIT;W10
 ;;MEVVAST DEL;RECORD^MEVDELETE;W
 ;;MEVVAST SETREG;SETREG^MEVREGISTRY;W7L50000
 ;;MEVVTXC SET;VTXC^MEVSAVEVISIT;W5
 ;;MEVVTXC DEL;RECORD^MEVDELETE;W
 ;;MEVREF SET;SET^MEVREFUSALS;W6
 ;;MEVREF DEL;RECORD^MEVDELETE;W
 ;;MEVVER SET;VER^MEVSAVEVISIT;W14
 ;;MEVVER DEL;RECORD^MEVDELETE;W
 ;;MEVREP GET;REP^MEVREADRECORDS;R
 ;;MEVBMSR GET;BMSR^MEVREADRECORDS;R
 ;;MEVVIF GET;LIST^MEVREADRECORDS;R
 ;;MEVVELD GET;LIST^MEVREADRECORDS;R
 ;;MEVVAST GET;LIST^MEVREADRECORDS;R
 ;;MEVVTXC GET;LIST^MEVREADRECORDS;R
 ;;MEVVER GET;LIST^MEVREADRECORDS;R
 ;;MEVVAST GETREG;GETREG^MEVREGISTRY;R
 ;;MEVVAST GETNOTE;GETNOTE^MEVREGISTRY;R
 ;;MEVREF GET;GET^MEVREFUSALS;R
 ;;MEVREF REFLIST;REFLIST^MEVREFUSALS;
 ;;
