MEVEVENTS ; Events between sessions
 ; Each session has a number, a lock on it for life, a list of subscribed names and a queue. Who raises an event puts it
 ; into the queues of all subscribers and wakes their processes; they send it between two frames. Whoever can get a
 ; session's lock knows that it is gone, and clears what it left.
 ;
 ; ^MEVSES(session)=process id    ^MEVSES(session,"USER")=user    ^MEVSES(session,"SUB")=count of names
 ; ^MEVSES(session,"SUB",name)=""    ^MEVSUB(name,session)=""
 ; ^MEVQUE(session)=last entry    ^MEVQUE(session,entry)=name LF data    ^MEVQUE(session,0)="" too many waited: it shall end
 ;
OPEN ; A session begins. Its lock is of the kind that LOCK, which ends a call's locks, leaves alone.
 SET session=$INCREMENT(^MEVSES)
 ZALLOCATE ^MEVSESL(session)
 SET ^MEVSES(session)=$JOB
 QUIT
 ;
CLOSE ; A session ends
 DO SIGNOFF^MEVAUDIT,CLEAR(session)
 ZDEALLOCATE
 QUIT
 ;
CLEAR(number) ; Takes out all that a session left
 NEW name
 SET name=""
 FOR  SET name=$ORDER(^MEVSES(number,"SUB",name)) QUIT:name=""  KILL ^MEVSUB(name,number)
 KILL ^MEVSES(number),^MEVQUE(number)
 QUIT
 ;
SWEEP ; Clears the sessions whose processes are gone
 NEW ignored,number
 SET number=""
 FOR  SET number=$ORDER(^MEVSES(number)) QUIT:number=""  IF number'=session SET ignored=$$ALIVE(number)
 QUIT
 ;
ALIVE(number) ; The session's process lives; what a dead one left is cleared
 LOCK +^MEVSESL(number):0 ELSE  QUIT 1
 DO GONE^MEVAUDIT(number),CLEAR(number)
 LOCK -^MEVSESL(number)
 QUIT 0
 ;
SUBSCRIBE ; Call: event name
 IF param="" SET reply="-1^An event name is missing." QUIT
 IF $LENGTH(param)>200 SET reply="-1^The event name is too long." QUIT
 IF '$DATA(^MEVSES(session,"SUB",param)) DO  QUIT:reply'=""
 . IF $GET(^MEVSES(session,"SUB"))'<$$NAMES^MEVLIMITS SET reply="-1^This session subscribes "_$FNUMBER($$NAMES^MEVLIMITS,",")_" events already." QUIT
 . SET ^MEVSES(session,"SUB")=$GET(^MEVSES(session,"SUB"))+1
 SET ^MEVSES(session,"SUB",param)="",^MEVSUB(param,session)="",reply=1
 QUIT
 ;
DROP ; Call: event name
 SET reply=1
 QUIT:param=""
 QUIT:$LENGTH(param)>200
 QUIT:'$DATA(^MEVSES(session,"SUB",param))
 SET ^MEVSES(session,"SUB")=^MEVSES(session,"SUB")-1
 KILL ^MEVSES(session,"SUB",param),^MEVSUB(param,session)
 QUIT
 ;
RAISE(event,data) ; Queues an event for the subscribers of its name and of each beginning that a "." ends
 NEW name,number,part,told
 FOR part=1:1:$LENGTH(event,".") SET name=$PIECE(event,".",1,part) IF name'="" DO
 . SET number=""
 . FOR  SET number=$ORDER(^MEVSUB(name,number)) QUIT:number=""  IF '$DATA(told(number)) SET told(number)="" DO TELL(number)
 QUIT
 ;
TELL(number) ; Queues for one session; SIGNAL wakes it, after the transaction
 ; Who does not read the events gets no more of them, and is ended: a host that comes back reloads what it shows.
 NEW first
 IF '$PIECE($GET(^MEVUSR(+$GET(^MEVSES(number,"USER")),0)),"^",4) QUIT  ; disabled meanwhile
 SET first=$ORDER(^MEVQUE(number,"")),signals(number)=""
 QUIT:first=0
 IF first,^MEVQUE(number)-first+1'<$$EVENTS^MEVLIMITS KILL ^MEVQUE(number) SET ^MEVQUE(number,0)="" QUIT
 SET ^MEVQUE(number,$INCREMENT(^MEVQUE(number)))=event_$CHAR(10)_data
 QUIT
 ;
SIGNAL ; Wakes the sessions that something was queued for. A dead session's process number may long be another program's.
 NEW ignored,number,process
 SET number=""
 FOR  SET number=$ORDER(signals(number)) QUIT:number=""  DO
 . IF number=$GET(session) SET wake=1 QUIT
 . SET process=+$GET(^MEVSES(number))
 . IF process>0,$$ALIVE(number) SET ignored=$ZSIGPROC(process,10)
 KILL signals
 QUIT
 ;
WAKE ; By the signal of another session: sends at once when no frame is being worked on
 SET wake=1
 IF busy QUIT
 IF waiting ZGOTO waiting:HEARD^MEVSESSION
 IF stream="socket" QUIT
 DO SENDALL
 USE input
 QUIT
 ;
FLUSH ; Before a request is waited for: sends what has come in, then lets WAKE do it
 FOR  DO SENDALL SET busy=0 QUIT:'wake
 QUIT
 ;
SENDALL ; Sends the queue
 NEW entry
 SET busy=1,wake=0,entry=""
 FOR  SET entry=$ORDER(^MEVQUE(session,entry)) QUIT:entry=""  DO
 . IF entry=0 DO FAILED^MEVSESSION(0,"This host has not read its events: the server ends its session."),CLOSE HALT
 . DO FRAME^MEVSESSION("E"_^MEVQUE(session,entry))
 . KILL ^MEVQUE(session,entry)
 SET busy=0
 QUIT
 ;
NOTIFY ; The administrator's tool: raises the event that the environment names
 NEW event
 SET event=$ZTRNLNM("mev_event")
 DO RAISE(event,$ZTRNLNM("mev_event_data")),SIGNAL
 HALT
