MEVEVENTS ; Events between sessions
 ; Each session has a number, a lock on that number until it ends, a list of subscribed names, and a queue. RAISE adds
 ; an event to the queues of all subscribers and wakes their processes, which send it between two frames. A process that
 ; can take a session's lock knows that the session has ended, and removes its data.
 ;
 ; ^MEVSES(session)=process id    ^MEVSES(session,"USER")=user    ^MEVSES(session,"NAME")=name, chosen by the host
 ; ^MEVSES(session,"SUB")=count of subscribed names
 ; ^MEVSES(session,"SUB",name)=""    ^MEVSUB(name,session)=""
 ; ^MEVQUE(session)=last entry    ^MEVQUE(session,entry)=name LF data    ^MEVQUE(session,0)="" if it overflowed
 ;
 ; Entries are numbered without gaps, in the order of their transactions. A session remembers which it has sent (heard)
 ; and removes those rarely, in batches: 200 sessions that each remove one entry after the same save compete for the
 ; database. A session that dies leaves its position, and its queue is removed: its host continues in another session.
 ;
OPEN ; A session begins. ZALLOCATE makes a lock that LOCK, which releases a call's locks, does not release.
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
CLEAR(number) ; Removes a session's subscriptions and queue
 NEW name
 SET name=""
 FOR  SET name=$ORDER(^MEVSES(number,"SUB",name)) QUIT:name=""  KILL ^MEVSUB(name,number)
 KILL ^MEVSES(number),^MEVQUE(number)
 QUIT
 ;
SWEEP ; Clears the sessions whose processes have ended
 NEW ignored,number
 SET number=""
 FOR  SET number=$ORDER(^MEVSES(number)) QUIT:number=""  IF number'=session SET ignored=$$ALIVE(number)
 QUIT
 ;
ALIVE(number) ; True if the session's process is running; otherwise clears the session
 LOCK +^MEVSESL(number):0 ELSE  QUIT 1
 DO GONE^MEVAUDIT(number),CLEAR(number)
 LOCK -^MEVSESL(number)
 QUIT 0
 ;
SUBSCRIBE ; Call: event name
 IF param="" SET reply="-1^An event name is missing." QUIT
 IF $LENGTH(param)>200 SET reply="-1^The event name is too long." QUIT
 IF '$DATA(^MEVSES(session,"SUB",param)) DO  QUIT:reply'=""
 . IF $GET(^MEVSES(session,"SUB"))'<$$NAMES^MEVLIMITS DO  QUIT
 . . SET reply="-1^This session subscribes to "_$FNUMBER($$NAMES^MEVLIMITS,",")_" events already."
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
RAISE(event,data) ; Queues an event for the subscribers of its name and of each prefix that ends before a "."
 NEW name,number,part,queued
 FOR part=1:1:$LENGTH(event,".") SET name=$PIECE(event,".",1,part) IF name'="" DO
 . SET number=""
 . FOR  SET number=$ORDER(^MEVSUB(name,number)) QUIT:number=""  IF '$DATA(queued(number)) DO
 . . SET queued(number)=""
 . . DO QUEUE(number)
 QUIT
 ;
QUEUE(number) ; Queues the event for one session, which SIGNAL wakes after the transaction; always in a transaction
 ; A session that does not read its events is ended: its host reloads everything when it reconnects.
 NEW first
 IF '$PIECE($GET(^MEVUSR(+$GET(^MEVSES(number,"USER")),0)),"^",4) QUIT  ; the user was disabled meanwhile
 SET first=$ORDER(^MEVQUE(number,"")),signals(number)=""
 QUIT:first=0
 IF first,^MEVQUE(number)-first+1'<$$EVENTS^MEVLIMITS KILL ^MEVQUE(number) SET ^MEVQUE(number,0)="" QUIT
 SET ^MEVQUE(number,$INCREMENT(^MEVQUE(number)))=event_$CHAR(10)_$SELECT(data="":$$MARK(number),1:data)
 QUIT
 ;
MARK(number) ; "OWN" for the session that raises the event, so that its host can tell its own changes from others'
 ; Compares names, because a host that lost its connection continues in a new process with another number.
 QUIT $SELECT($GET(token)="":"",$GET(^MEVSES(number,"NAME"))=token:"OWN",1:"")
 ;
SIGNAL ; Wakes the sessions with queued events. ALIVE comes first: another program may have a dead session's process id.
 NEW ignored,number,process
 SET number=""
 FOR  SET number=$ORDER(signals(number)) QUIT:number=""  DO
 . IF number=$GET(session) SET wake=1 QUIT
 . SET process=+$GET(^MEVSES(number))
 . IF process>0,$$ALIVE(number) SET ignored=$ZSIGPROC(process,10)
 KILL signals
 QUIT
 ;
WAKE ; Handles the signal of another session: sends the queue immediately unless a frame is being processed
 SET wake=1
 IF busy QUIT
 IF waiting ZGOTO waiting:HEARD^MEVSESSION
 IF stream="socket" QUIT
 DO SENDALL
 USE input
 QUIT
 ;
FLUSH ; Sends the queue before the wait for a request; during the wait, WAKE does
 FOR  DO SENDALL SET busy=0 QUIT:'wake
 QUIT
 ;
SENDALL ; Sends the queue's new entries
 NEW entry
 SET busy=1,wake=0
 FOR  SET entry=$GET(^MEVQUE(session,heard+1)) QUIT:entry=""  SET heard=heard+1 DO FRAME^MEVSESSION("E"_entry)
 IF $DATA(^MEVQUE(session,0)) DO  HALT
 . DO FAILED^MEVSESSION(0,"This host does not read its events: the server ends the session."),CLOSE
 IF heard-removed>(50+(session#50)) DO REMOVE
 SET busy=0
 QUIT
 ;
REMOVE ; Removes the sent entries, in each session after another number of events so that few do it after the same one
 FOR removed=removed+1:1:heard KILL ^MEVQUE(session,removed)
 QUIT
 ;
NOTIFY ; Entry point of phserver --notify: raises the event that the environment names
 NEW event
 SET event=$ZTRNLNM("mev_event")
 TSTART ():SERIAL
 KILL signals
 DO RAISE(event,$ZTRNLNM("mev_event_data"))
 TCOMMIT
 DO SIGNAL
 HALT
