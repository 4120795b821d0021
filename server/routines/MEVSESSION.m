MEVSESSION ; One session: reads request frames, dispatches the calls, writes reply frames
 ; Dispatches by a fixed table and answers each request with one frame. An error ends the call, never the session.
 ;
 ; The session's variables:
 ;   session  its number                              token    its name, chosen by the host
 ;   user     the user's number, 0 before sign-on     person   the user's name
 ;   input    the device of requests                  stream   "socket" or "pipe"
 ;   busy     a frame is being processed or written   writing  a frame is partly written
 ;   wake     an event arrived meanwhile              waiting  the stack level of LISTEN while it waits, else 0
 ;   speaks   the host's version of the protocol      seen     what the user has read: MEVAUDIT
 ;   turns    waits of 20 s inside a frame            row      refusals since the last change
 ;   tired    the session ends after this reply       ended    the session ends now
 ;   heard    the last event sent: MEVEVENTS          removed  the last event removed from the queue
 ;
SERVE ; Entry point: serves until the input ends
 NEW busy,calls,ended,heard,input,param,person,removed,row,seen,session,speaks,stream,tired,token,turns,user
 NEW waiting,wake,writing
 SET $ETRAP="GOTO BROKEN^MEVSESSION"
 SET busy=1,speaks=1,(token,person)="",(wake,writing,waiting,ended,user,heard,removed,row,tired,seen,seen("count"))=0
 SET $ZINTERRUPT="DO WAKE^MEVEVENTS"
 DO OPENINPUT
 DO LOADTABLE
 DO READY^MEVDATAVERSION
 DO OPEN^MEVEVENTS
 FOR  DO NEXT QUIT:ended
 DO CLOSE^MEVEVENTS
 HALT
 ;
OPENINPUT ; Opens both streams for plain bytes
 SET stream=$SELECT($ZTRNLNM("mev_stream")="socket":"socket",1:"pipe")
 IF stream="socket" SET input=$PRINCIPAL USE $PRINCIPAL:(NODELIMITER:WIDTH=1048576:ZNODELAY) QUIT
 USE $PRINCIPAL:(NOWRAP:WIDTH=1048576:NOESCAPE)
 ; Opens the input again because the principal device would end a read at each line feed.
 SET input="/dev/stdin"
 OPEN input:(FIFO:FIXED:READONLY:NOWRAP:RECORDSIZE=1048576)
 QUIT
 ;
BROKEN ; Ends a session that has lost its database or its client; reports the error if a frame can still be sent
 SET $ETRAP="ZHALT 9"
 IF 'writing DO FAILED(0,"The server cannot continue: "_$$REASON($ZSTATUS))
 ZHALT 9
 ;
REASON(status) ; The engine's code and message of an error, such as UNDEF, Undefined local variable: x
 NEW text
 SET text=$PIECE(status,",",3,99)
 IF text["-E-" SET text=$PIECE(text,"-E-",2,99)
 QUIT $TRANSLATE($EXTRACT(text,1,200),$CHAR(10,13),"  ")_"."
 ;
NEXT ; Processes one request
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
LISTEN() ; Waits for the first byte of a request on a socket; false if an event arrived first or the wait timed out
 ; No event could be written inside an interrupted read of a socket, so WAKE leaves this wait instead.
 NEW ready
 SET ready=0,waiting=$ZLEVEL
 USE $PRINCIPAL
 IF 'wake WRITE /WAIT(20) SET ready=$TEST
HEARD SET waiting=0,busy=1
 QUIT ready
 ;
READ(count,data) ; Reads exactly count bytes; false at the end of the input or if a frame stays incomplete for a minute
 ; Waits in turns: a signal during the handling of another one is lost, and its event is sent at the next turn.
 NEW part
 SET data=""
 USE input
 FOR  QUIT:$LENGTH(data)=count  READ part#(count-$LENGTH(data)):20 DO  QUIT:$ZEOF&(part="")  QUIT:turns>2  DO TURN
 . IF '$TEST,busy!(data_part'="") SET turns=turns+1
 . SET data=data_part
 USE $PRINCIPAL
 IF turns>2 DO FAILED(0,"The rest of the request did not arrive within a minute.")
 QUIT $LENGTH(data)=count
 ;
TURN ; Between two waits of READ: sends the queued events, except inside a frame
 QUIT:busy
 DO SENDALL^MEVEVENTS
 USE input
 QUIT
 ;
SKIP(length) ; Reads and discards a request that is too long
 NEW head,number,part,reply,rest
 IF '$$READ(200,.head) SET ended=1 QUIT
 SET rest=length-200
 FOR  QUIT:rest<1  QUIT:ended  SET ended='$$READ($SELECT(rest>32000:32000,1:rest),.part),rest=rest-32000
 QUIT:ended
 ; A refusal, not a failure, so that the form keeps what the user entered.
 SET number=$$NUMBER($PIECE(head,$CHAR(10)))
 IF number,user SET reply="-1^The request is longer than 1,000,000 bytes." DO ANSWER(number) QUIT
 DO FAILED(number,"The request is longer than 1,000,000 bytes.")
 QUIT
 ;
NUMBER(text) ; The request's number: the text before the first blank; 0 if that is not a number
 SET text=$PIECE(text," ")
 QUIT $SELECT(text?1.15N:+text,1:0)
 ;
REQUEST(body) ; Handles a request: number and purpose, name, and parameter, separated by line feeds
 NEW name,number,purpose
 SET number=$$NUMBER($PIECE(body,$CHAR(10)))
 IF number=0 DO FAILED(0,"The request has no number.") QUIT
 SET purpose=$PIECE($EXTRACT($PIECE(body,$CHAR(10)),1,1000)," ",2,999)
 IF purpose'=""," LIST EDIT CHECK "'[(" "_$PIECE(purpose," ")_" ") DO  QUIT
 . DO FAILED(number,"The request's purpose is not known.")
 IF $LENGTH(body,$CHAR(10))<3 DO FAILED(number,"The request has no name.") QUIT
 SET name=$PIECE(body,$CHAR(10),2),param=$PIECE(body,$CHAR(10),3,$LENGTH(body))
 IF name="" DO FAILED(number,"The request has no name.") QUIT
 IF '$DATA(calls(name)) DO FAILED(number,"The server has no call named '"_$$BRIEF^MEVTEXT(name,60)_"'.") QUIT
 IF 'user,$PIECE(calls(name),";",2)'["O" DO FAILED(number,"Sign on first.") QUIT
 DO CALL(number,name)
 QUIT
 ;
CALL(number,name) ; Runs a call and replies, outside the call's trap because a partial frame cannot be repaired
 NEW failure,filed,reply
 SET failure="",filed=0,reply=""
 DO TRY(number,name)
 ; A save that failed is refused like one with an invalid value, so that the client keeps what the user entered.
 IF failure'="",'filed,$PIECE(calls(name),";",2)["W" DO
 . KILL reply
 . SET reply="-1^"_$TRANSLATE(failure,"^"," "),failure=""
 IF failure'="" DO FAILED(number,failure) QUIT
 DO ANSWER(number)
 IF tired DO FAILED(0,"Too many calls were refused: the server ends this session.") SET ended=1
 QUIT
 ;
TRY(number,name) ; Runs a call under its own trap: sets reply, or failure to a sentence
 NEW $ETRAP,flags,level,most
 SET level=$ZLEVEL
 SET $ETRAP="ZGOTO level:UNDO^MEVSESSION"
 SET flags=$PIECE(calls(name),";",2),failure=$$FORBIDDEN^MEVLIMITS(flags)
 IF failure'="" DO NO^MEVSAVE(failure),SLOW^MEVLIMITS($$PATIENCE^MEVLIMITS+1) SET failure="" QUIT
 SET most=+$PIECE(flags,"W",2)
 ; A "^" inside a text would shift the following pieces.
 IF most,$LENGTH(param,"^")>most DO NO^MEVSAVE("A text cannot contain a ""^"": nothing was saved.") QUIT
 IF flags["W" DO ONCE^MEVTRANSACTION(number,name,$PIECE(calls(name),";")) QUIT
 IF purpose="LIST"!(purpose="EDIT") DO READ^MEVCONFLICTS(number,$PIECE(calls(name),";"))
 IF purpose'="LIST",purpose'="EDIT" DO @$PIECE(calls(name),";") ; from the table below, never from a client
 IF flags["R",$EXTRACT(reply,1,3)'="-1^" DO LOOK^MEVAUDIT(name)
 QUIT
 ;
UNDO ; Error trap of TRY: undoes the failed call; the session continues
 SET $ETRAP="GOTO BROKEN^MEVSESSION"
 SET failure="The server could not carry out "_name_": "
 IF filed SET failure="The change was made, but then the server failed: "
 SET failure=failure_$$REASON($ZSTATUS),$ECODE=""
 IF $TLEVEL TROLLBACK
 LOCK  ; the call's locks; the session's own is held by ZALLOCATE
 KILL signals
 QUIT
 ;
ANSWER(number) ; Sends reply, or the lines reply(1), reply(2) ... each with a line end
 ; Clients recognise an error by a negative number at the beginning. Only a refusal, "-1" and a sentence, may have one.
 NEW chunk,chunks,index,total
 IF '$DATA(reply(1)) DO  QUIT
 . DO FRAME("R"_number_$CHAR(10)_$SELECT(reply?1"-1^"1.E:reply,1:$$GUARDED^MEVTEXT(reply)))
 SET reply(1)=$$GUARDED^MEVTEXT(reply(1))
 SET chunk="R"_number_$CHAR(10),(chunks,total)=0
 FOR index=1:1 QUIT:'$DATA(reply(index))  DO:$LENGTH(chunk)>32000 CHUNK SET chunk=chunk_reply(index)_$CHAR(13,10)
 DO CHUNK
 SET chunks(1)=$$EIGHT(total)_chunks(1)
 FOR index=1:1:chunks DO PUT(chunks(index))
 QUIT
 ;
CHUNK ; Closes a part of ANSWER's frame
 SET chunks=chunks+1,chunks(chunks)=chunk,total=total+$LENGTH(chunk),chunk=""
 QUIT
 ;
FAILED(number,text) ; Sends a failure frame
 DO FRAME("F"_number_$CHAR(10)_text)
 QUIT
 ;
FRAME(body) ; Sends one frame
 DO PUT($$EIGHT($LENGTH(body))_body)
 QUIT
 ;
PUT(bytes) ; Writes bytes unchanged
 SET writing=1
 USE $PRINCIPAL
 WRITE bytes
 SET $X=0,writing=0
 QUIT
 ;
EIGHT(number) ; The number in eight digits
 QUIT $TRANSLATE($JUSTIFY(number,8)," ","0")
 ;
LOADTABLE ; Loads the table: calls(name)=entry;flags
 NEW line,text
 FOR line=1:1 SET text=$PIECE($TEXT(TABLE+line),";;",2,3) QUIT:text=""  SET calls($PIECE(text,";"))=$PIECE(text,";",2,3)
 QUIT
 ;
 ; Flags: O allowed before sign-on; W changes data, W7 with at most 7 pieces; R reads a patient's data; L most bytes
TABLE ; name;entry;flags
 ;;MEVHOST USERS;USERS^MEVHOSTCALLS;O
 ;;MEVHOST SIGNON;SIGNON^MEVHOSTCALLS;O
 ;;MEVHOST KEYS;KEYS^MEVHOSTCALLS;L100000
 ;;MEVHOST PATIENTS;PATIENTS^MEVHOSTCALLS;
 ;;MEVHOST PATIENT;PATIENT^MEVHOSTCALLS;R
 ;;MEVHOST VISITS;VISITS^MEVHOSTCALLS;R
 ;;MEVHOST VISIT;VISIT^MEVHOSTCALLS;R
 ;;MEVHOST SAMPLE;SAMPLE^MEVHOSTCALLS;
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
